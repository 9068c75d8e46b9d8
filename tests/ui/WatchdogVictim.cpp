// A program that hangs as tests do: in a message box that nobody closes, or, when told "busy", without a window.
#include "support/Watchdog.h"

#include <windows.h>

#include <chrono>
#include <string_view>

int main(int argc, char** argv)
{
    constexpr std::chrono::milliseconds Limit{300};
    sitekeeper::Watchdog watchdog;
    watchdog.Guard("the victim", Limit);
    if (argc > 1 && std::string_view(argv[1]) == "busy") {
        ::WaitForSingleObject(::GetCurrentThread(), INFINITE);
    }
    ::MessageBoxW(nullptr, L"Does anybody see this?", L"A forgotten box", MB_OK);
    return 0;
}
