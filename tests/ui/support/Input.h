// The one mouse and the one keyboard, as the system sees them. Events are queued; they arrive with the next messages.
#pragma once

#include <windows.h>

namespace sitekeeper {

void MoveMouse(POINT screen);
void PressMouse();
void ReleaseMouse();
void PressKey(WORD key);

} // namespace sitekeeper
