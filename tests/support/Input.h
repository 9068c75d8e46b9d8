// The one mouse and the one keyboard, as the system sees them. Events are queued; they arrive with the next messages.
#pragma once

#include <windows.h>

namespace sitekeeper {

void MoveMouse(POINT screen);
void PressMouse();
void ReleaseMouse();
void HoldKey(WORD key);
void ReleaseKey(WORD key);
void PressKey(WORD key);
void PressWithControl(WORD key);

} // namespace sitekeeper
