// A program that goes wrong as tests do: it hangs in a message box that nobody closes, or, when told "busy", without a
// window; told "overflow", it counts beyond the last number.
#include "support/Watchdog.h"

#include <windows.h>

#include <chrono>
#include <limits>
#include <string_view>

namespace {

constexpr std::chrono::milliseconds Limit{300};
/// For the box to come, however busy the machine is.
constexpr std::chrono::seconds Patience{30};
constexpr const wchar_t* Caption = L"A forgotten box";

sitekeeper::Watchdog& TheWatchdog()
{
    static sitekeeper::Watchdog watchdog;
    return watchdog;
}

/// The limit begins when the box stands: a process may take longer than that to show its first window.
void CALLBACK GuardTheBox(HWND /*window*/, UINT /*message*/, UINT_PTR timer, DWORD /*time*/)
{
    const HWND box = ::FindWindowW(L"#32770", Caption);
    if (box != nullptr && ::IsWindowVisible(box) != FALSE) {
        ::KillTimer(nullptr, timer);
        TheWatchdog().Guard("the victim", Limit);
    }
}

} // namespace

int main(int argc, char** argv)
{
    const std::string_view task = argc > 1 ? argv[1] : "";
    if (task == "overflow") {
        return std::numeric_limits<int>::max() - 1 + argc;
    }
    if (task == "busy") {
        TheWatchdog().Guard("the victim", Limit);
        ::WaitForSingleObject(::GetCurrentThread(), INFINITE);
    }
    TheWatchdog().Guard("the victim", Patience);
    ::SetTimer(nullptr, 0, 10, &GuardTheBox);
    ::MessageBoxW(nullptr, L"Does anybody see this?", Caption, MB_OK);
    return 0;
}
