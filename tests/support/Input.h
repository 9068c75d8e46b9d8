// The one mouse and the one keyboard, as the system sees them. Events are queued; they arrive with the next messages.
#pragma once

#include <windows.h>

#include <string_view>

namespace sitekeeper {

void MoveMouse(POINT screen);
void PressMouse();
void ReleaseMouse();
void HoldKey(WORD key);
void ReleaseKey(WORD key);
void PressKey(WORD key);
void PressWithControl(WORD key);
void PressWith(WORD held, WORD key);
/// Characters as a keyboard of any language types them.
void TypeText(std::wstring_view text);

} // namespace sitekeeper
