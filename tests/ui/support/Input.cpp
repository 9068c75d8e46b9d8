#include "support/Input.h"

namespace sitekeeper {
namespace {

void SendMouse(DWORD flags)
{
    INPUT event{};
    event.type = INPUT_MOUSE;
    event.mi.dwFlags = flags;
    ::SendInput(1, &event, sizeof event);
}

} // namespace

void MoveMouse(POINT screen)
{
    ::SetCursorPos(screen.x, screen.y);
}

void PressMouse()
{
    SendMouse(MOUSEEVENTF_LEFTDOWN);
}

void ReleaseMouse()
{
    SendMouse(MOUSEEVENTF_LEFTUP);
}

void PressKey(WORD key)
{
    INPUT events[2]{};
    events[0].type = INPUT_KEYBOARD;
    events[0].ki.wVk = key;
    events[1] = events[0];
    events[1].ki.dwFlags = KEYEVENTF_KEYUP;
    ::SendInput(2, events, sizeof events[0]);
}

} // namespace sitekeeper
