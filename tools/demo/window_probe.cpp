// Looks at the main window of Site Keeper from outside.
//   window_probe wait SECONDS    until it stands alone and answers; prints X Y WIDTH HEIGHT
//   window_probe fields SECONDS  prints the three folders that it shows, a line each
//   window_probe ok SECONDS      presses its OK, until its process has ended
//   window_probe close SECONDS   asks it to close, until its process has ended
// Ends with 0, or with 1 after saying what it saw instead.
#include <windows.h>

#include <cstdio>
#include <cwchar>
#include <string>
#include <string_view>
#include <tlhelp32.h>
#include <vector>

namespace {

constexpr wchar_t kProgram[] = L"SiteKeeper64.exe";
constexpr wchar_t kDialogClass[] = L"#32770";
constexpr std::wstring_view kMainTitle = L" ";
constexpr int kMainControl = 1000;
constexpr int kFolderControls[] = {1000, 1001, 1003};
constexpr DWORD kPollMilliseconds = 20;

DWORD FindProgram()
{
    HANDLE snapshot = ::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    DWORD found = 0;
    for (BOOL more = ::Process32FirstW(snapshot, &entry); more != FALSE && found == 0;
         more = ::Process32NextW(snapshot, &entry)) {
        if (::lstrcmpiW(entry.szExeFile, kProgram) == 0) {
            found = entry.th32ProcessID;
        }
    }
    ::CloseHandle(snapshot);
    return found;
}

struct Search
{
    DWORD process;
    std::vector<HWND> windows;
};

BOOL CALLBACK CollectVisible(HWND window, LPARAM parameter)
{
    auto& search = *reinterpret_cast<Search*>(parameter);
    DWORD process = 0;
    ::GetWindowThreadProcessId(window, &process);
    if (process == search.process && ::IsWindowVisible(window) != FALSE) {
        search.windows.push_back(window);
    }
    return TRUE;
}

std::vector<HWND> VisibleWindows(DWORD process)
{
    Search search{process, {}};
    if (process != 0) {
        ::EnumWindows(CollectVisible, reinterpret_cast<LPARAM>(&search));
    }
    return search.windows;
}

std::wstring Title(HWND window)
{
    wchar_t title[256]{};
    ::GetWindowTextW(window, title, 256);
    return title;
}

std::wstring ClassName(HWND window)
{
    wchar_t name[256]{};
    ::GetClassNameW(window, name, 256);
    return name;
}

bool IsMain(HWND window)
{
    return ClassName(window) == kDialogClass && Title(window) == kMainTitle &&
           ::GetDlgItem(window, kMainControl) != nullptr;
}

HWND FindMain(const std::vector<HWND>& windows)
{
    for (HWND window : windows) {
        if (IsMain(window)) {
            return window;
        }
    }
    return nullptr;
}

bool Answers(HWND window)
{
    DWORD_PTR ignored = 0;
    return ::SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, 1000, &ignored) != 0;
}

void Describe(const std::vector<HWND>& windows)
{
    if (windows.empty()) {
        std::printf(FindProgram() == 0 ? "%ls does not run\n" : "%ls has no visible window\n", kProgram);
    }
    for (HWND window : windows) {
        RECT r{};
        ::GetWindowRect(window, &r);
        std::printf("window: class \"%ls\", title \"%ls\", at %ld %ld, size %ld %ld\n", ClassName(window).c_str(),
                    Title(window).c_str(), r.left, r.top, r.right - r.left, r.bottom - r.top);
    }
}

int WaitForMain(ULONGLONG end)
{
    for (bool has_run = false;;) {
        const DWORD process = FindProgram();
        const std::vector<HWND> windows = VisibleWindows(process);
        HWND main = FindMain(windows);
        // Alone: no message stands above it. The splash has gone before it comes.
        if (main != nullptr && windows.size() == 1 && Answers(main)) {
            RECT r{};
            ::GetWindowRect(main, &r);
            std::printf("%ld %ld %ld %ld\n", r.left, r.top, r.right - r.left, r.bottom - r.top);
            return 0;
        }
        if (::GetTickCount64() >= end || (has_run && process == 0)) {
            Describe(windows);
            return 1;
        }
        has_run = process != 0;
        ::Sleep(kPollMilliseconds);
    }
}

int PrintFields()
{
    const std::vector<HWND> windows = VisibleWindows(FindProgram());
    HWND main = FindMain(windows);
    if (main == nullptr) {
        Describe(windows);
        return 1;
    }
    for (int control : kFolderControls) {
        wchar_t folder[1024]{};
        ::SendDlgItemMessageW(main, control, WM_GETTEXT, 1024, reinterpret_cast<LPARAM>(folder));
        std::printf("%ls\n", folder);
    }
    return 0;
}

// Posts a message to the main window, and waits for the end of its program.
int EndMain(ULONGLONG end, UINT message, WPARAM parameter)
{
    const DWORD id = FindProgram();
    const std::vector<HWND> windows = VisibleWindows(id);
    HWND main = FindMain(windows);
    if (main == nullptr) {
        Describe(windows);
        return 1;
    }
    HANDLE process = ::OpenProcess(SYNCHRONIZE, FALSE, id);
    ::PostMessageW(main, message, parameter, 0);
    const ULONGLONG now = ::GetTickCount64();
    const DWORD left = end > now ? static_cast<DWORD>(end - now) : 0;
    const bool ended = ::WaitForSingleObject(process, left) == WAIT_OBJECT_0;
    ::CloseHandle(process);
    if (!ended) {
        Describe(VisibleWindows(id));
    }
    return ended ? 0 : 1;
}

} // namespace

int wmain(int count, wchar_t* arguments[])
{
    const std::wstring command = count == 3 ? arguments[1] : L"";
    const ULONGLONG end = ::GetTickCount64() + (count == 3 ? 1000ULL * std::wcstoul(arguments[2], nullptr, 10) : 0);
    if (command == L"wait") {
        return WaitForMain(end);
    }
    if (command == L"fields") {
        return PrintFields();
    }
    if (command == L"ok") {
        return EndMain(end, WM_COMMAND, IDOK);
    }
    if (command == L"close") {
        return EndMain(end, WM_CLOSE, 0);
    }
    std::puts("usage: window_probe wait|fields|ok|close SECONDS");
    return 2;
}
