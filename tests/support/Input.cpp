#include "support/Input.h"

#include <initializer_list>

namespace sitekeeper {
namespace {

void SendMouse(DWORD flags)
{
    INPUT event{};
    event.type = INPUT_MOUSE;
    event.mi.dwFlags = flags;
    ::SendInput(1, &event, sizeof event);
}

void SendKey(WORD key, DWORD flags)
{
    INPUT event{};
    event.type = INPUT_KEYBOARD;
    event.ki.wVk = key;
    event.ki.dwFlags = flags;
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

void HoldKey(WORD key)
{
    SendKey(key, 0);
}

void ReleaseKey(WORD key)
{
    SendKey(key, KEYEVENTF_KEYUP);
}

void PressKey(WORD key)
{
    HoldKey(key);
    ReleaseKey(key);
}

void PressWithControl(WORD key)
{
    PressWith(VK_CONTROL, key);
}

void PressWith(WORD held, WORD key)
{
    HoldKey(held);
    PressKey(key);
    ReleaseKey(held);
}

void TypeText(std::wstring_view text)
{
    for (const wchar_t character : text) {
        for (const DWORD flags : {DWORD{KEYEVENTF_UNICODE}, DWORD{KEYEVENTF_UNICODE | KEYEVENTF_KEYUP}}) {
            INPUT event{};
            event.type = INPUT_KEYBOARD;
            event.ki.wScan = character;
            event.ki.dwFlags = flags;
            ::SendInput(1, &event, sizeof event);
        }
    }
}

} // namespace sitekeeper
