#include "frame/WinApp.h"

#include "text/Paths.h"

#include <commctrl.h>

namespace sitekeeper {
namespace {

constexpr UINT AppNameString = 57344; // as the header says, the application's name

} // namespace

CWinApp::CWinApp(HINSTANCE instance) : m_instance(instance), m_appName(ResourceText(AppNameString)) {}

int CWinApp::Run()
{
    bool isToRun = false;
    try {
        isToRun = InitInstance();
    } catch (...) {
        ReportError(std::current_exception());
    }
    MSG message{};
    while (isToRun && ::GetMessageW(&message, nullptr, 0, 0) > 0) {
        Dispatch(message, nullptr);
    }
    return ExitInstance();
}

bool CWinApp::InitInstance()
{
    INITCOMMONCONTROLSEX controls{};
    controls.dwSize = sizeof controls;
    controls.dwICC = ICC_WIN95_CLASSES | ICC_DATE_CLASSES | ICC_STANDARD_CLASSES;
    ::InitCommonControlsEx(&controls);
    return true;
}

int CWinApp::ExitInstance()
{
    return 0;
}

void CWinApp::OnHelp() {}

std::wstring CWinApp::ProgramFile()
{
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

std::wstring CWinApp::ProgramHelpFile()
{
    const std::wstring program = ProgramFile();
    return program.substr(0, ExtensionStart(program)) + L".HLP";
}

std::wstring CWinApp::ResourceText(HINSTANCE instance, UINT id)
{
    // With a length of 0 the call gives a pointer into the resource itself.
    const wchar_t* text = nullptr;
    const int length = ::LoadStringW(instance, id, reinterpret_cast<wchar_t*>(&text), 0);
    return length > 0 ? std::wstring(text, static_cast<std::size_t>(length)) : std::wstring();
}

std::span<const std::byte> CWinApp::ResourceBytes(const wchar_t* type, UINT id) const
{
    const HRSRC found = ::FindResourceW(m_instance, MAKEINTRESOURCEW(id), type);
    const HGLOBAL loaded = found != nullptr ? ::LoadResource(m_instance, found) : nullptr;
    if (loaded == nullptr) {
        return {};
    }
    return {static_cast<const std::byte*>(::LockResource(loaded)), ::SizeofResource(m_instance, found)};
}

std::wstring CWinApp::ProfileKey(const std::wstring& section) const
{
    return L"Software\\" + m_registryKey + L"\\" + m_appName + L"\\" + section;
}

void CWinApp::BeginWaitCursor()
{
    const HCURSOR former = ::SetCursor(::LoadCursorW(nullptr, IDC_WAIT));
    if (m_waiting++ == 0) {
        m_formerCursor = former;
    }
}

void CWinApp::EndWaitCursor()
{
    if (m_waiting > 0 && --m_waiting == 0) {
        ::SetCursor(m_formerCursor);
    }
}

void CWinApp::Dispatch(MSG& message, const CWnd* last)
{
    for (HWND window = message.hwnd; window != nullptr; window = ::GetParent(window)) {
        CWnd* const object = CWnd::FromHandle(window);
        if (object != nullptr && object->PreTranslateMessage(message)) {
            return;
        }
        if (last != nullptr && window == last->Handle()) {
            break;
        }
    }
    ::TranslateMessage(&message);
    ::DispatchMessageW(&message);
}

} // namespace sitekeeper
