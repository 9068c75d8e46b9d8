// A program that goes wrong as tests do: it hangs in a message box that nobody closes, or, when told "busy", without a
// window; told "overflow", it counts beyond the last number.
#include "support/Watchdog.h"

#include <windows.h>

#include <chrono>
#include <limits>
#include <string_view>

int main(int argc, char** argv)
{
    constexpr std::chrono::milliseconds Limit{300};
    const std::string_view task = argc > 1 ? argv[1] : "";
    if (task == "overflow") {
        return std::numeric_limits<int>::max() - 1 + argc;
    }
    sitekeeper::Watchdog watchdog;
    watchdog.Guard("the victim", Limit);
    if (task == "busy") {
        ::WaitForSingleObject(::GetCurrentThread(), INFINITE);
    }
    ::MessageBoxW(nullptr, L"Does anybody see this?", L"A forgotten box", MB_OK);
    return 0;
}
