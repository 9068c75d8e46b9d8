// Stays until it is ended. While a program with a window lives, Wine keeps its server and its desktop, so that the
// programs started meanwhile start warm.
#include <windows.h>

#include <cstdio>

int wmain()
{
    // A window makes Wine start its desktop.
    if (::CreateWindowExW(0, L"STATIC", L"keeper", 0, 0, 0, 0, 0, nullptr, nullptr, ::GetModuleHandleW(nullptr),
                          nullptr) == nullptr) {
        std::puts("no window");
        return 1;
    }
    std::puts("ready");
    std::fflush(stdout);
    MSG message{};
    while (::GetMessageW(&message, nullptr, 0, 0) > 0) {
        ::DispatchMessageW(&message);
    }
    return 0;
}
