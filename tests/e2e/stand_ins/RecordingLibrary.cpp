// Stands in for the dialogs library and writes down what the program asks of it, one line for each operation, into the
// file that SITEKEEPER_E2E_RECORD names. With SITEKEEPER_E2E_NO_OBJECT set it makes no object.
#include "dialogs/SplashMessageDialog.h"

#include <windows.h>

#include <string>

namespace {

std::wstring Variable(const wchar_t* name)
{
    const DWORD room = ::GetEnvironmentVariableW(name, nullptr, 0);
    std::wstring text(room, L'\0');
    text.resize(::GetEnvironmentVariableW(name, text.data(), room));
    return text;
}

void Record(const std::wstring& line)
{
    const HANDLE file = ::CreateFileW(Variable(L"SITEKEEPER_E2E_RECORD").c_str(), FILE_APPEND_DATA, FILE_SHARE_READ,
                                      nullptr, OPEN_ALWAYS, 0, nullptr);
    std::string bytes;
    for (const wchar_t character : line + L"\n") {
        bytes += static_cast<char>(character);
    }
    DWORD written = 0;
    ::WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    ::CloseHandle(file);
}

class Recorder final : public sitekeeper::CORSWSplashMsgDlg
{
public:
    Recorder() { Record(L"new"); }
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;
    ~Recorder() override { Record(L"deleted"); }

    int Create(HINSTANCE application) override
    {
        Record(application == ::GetModuleHandleW(nullptr) ? L"create for the program" : L"create for another module");
        return 1;
    }
    void SetTitle(const wchar_t* title) override { Record(std::wstring(L"title ") + title); }
    void SetMessage(const wchar_t* message) override { Record(std::wstring(L"message ") + message); }
    void SetIcon(UINT iconId) override { Record(L"icon " + std::to_wstring(iconId)); }
};

} // namespace

extern "C" __declspec(dllexport) sitekeeper::CORSWSplashMsgDlg* NewCORSWSplashMsgDlg()
{
    if (!Variable(L"SITEKEEPER_E2E_NO_OBJECT").empty()) {
        Record(L"no object");
        return nullptr;
    }
    return new Recorder();
}

BOOL WINAPI DllMain(HINSTANCE /*library*/, DWORD reason, void* /*reserved*/)
{
    if (reason == DLL_PROCESS_ATTACH) {
        Record(L"loaded");
    } else if (reason == DLL_PROCESS_DETACH) {
        Record(L"released");
    }
    return TRUE;
}
