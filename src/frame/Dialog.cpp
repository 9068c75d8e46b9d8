#include "frame/Dialog.h"

#include <stdexcept>
#include <utility>
#include <vector>

namespace sitekeeper {
namespace {

constexpr WORD FromMenuOrClick = 0; // menu item, or BN_CLICKED
constexpr WORD FromAccelerator = 1;

/// A window that takes no input meanwhile, also when an error ends that; one that took none before is left alone.
class DisabledWindow
{
public:
    explicit DisabledWindow(HWND window)
        : m_window(window != nullptr && ::IsWindowEnabled(window) != FALSE ? window : nullptr)
    {
        Enable(FALSE);
    }
    DisabledWindow(const DisabledWindow&) = delete;
    DisabledWindow& operator=(const DisabledWindow&) = delete;
    ~DisabledWindow() { Enable(TRUE); }

private:
    void Enable(BOOL isEnabled) const
    {
        if (m_window != nullptr) {
            ::EnableWindow(m_window, isEnabled);
        }
    }

    HWND m_window;
};

BOOL CALLBACK TellOfColours(HWND control, LPARAM /*unused*/)
{
    ::SendMessageW(control, WM_SYSCOLORCHANGE, 0, 0);
    return TRUE;
}

} // namespace

CDialog::CDialog(CWinApp& app, UINT templateId, const CWnd* owner)
    : m_app(app), m_templateId(templateId), m_owner(owner)
{}

CDialog::~CDialog()
{
    if (Handle() != nullptr) {
        ::DestroyWindow(Handle());
    }
}

INT_PTR CDialog::DoModal()
{
    const HWND owner = m_owner != nullptr ? m_owner->Handle() : nullptr;
    m_result = -1;
    m_error = nullptr;
    m_isRunning = true;
    {
        const DisabledWindow disabledOwner(owner);
        Make();
        if (Handle() != nullptr && m_error == nullptr) {
            RunLoop();
        }
        // The owner must be enabled before the dialog goes, or another program's window would come to the front.
    }
    DestroyWindow();
    if (m_error != nullptr) {
        std::rethrow_exception(std::exchange(m_error, nullptr));
    }
    return m_result;
}

void CDialog::Make()
{
    const auto resource = m_app.ResourceBytes(RT_DIALOG, m_templateId);
    std::vector<std::byte> copy;
    if (COccManager* const manager = m_app.OccManager()) {
        copy = manager->PreCreateDialog(resource).value_or(std::vector<std::byte>());
    }
    const void* const used = copy.empty() ? resource.data() : copy.data();
    const HWND owner = m_owner != nullptr ? m_owner->Handle() : nullptr;
    const bool isMade =
        used != nullptr && ::CreateDialogIndirectParamW(m_app.Instance(), static_cast<const DLGTEMPLATE*>(used), owner,
                                                        &Thunk, reinterpret_cast<LPARAM>(this)) != nullptr;
    if (!isMade && m_error == nullptr) {
        m_error = std::make_exception_ptr(std::runtime_error("a dialog could not be made"));
    }
}

void CDialog::RunLoop()
{
    if (m_isRunning) {
        ::ShowWindow(Handle(), SW_SHOWNORMAL);
        ::UpdateWindow(Handle());
    }
    while (m_isRunning && Handle() != nullptr) {
        MSG message{};
        if (::GetMessageW(&message, nullptr, 0, 0) <= 0) {
            ::PostQuitMessage(static_cast<int>(message.wParam)); // for the loop around this one
            break;
        }
        CWinApp::Dispatch(message, this);
        ReportKeptError();
    }
}

void CDialog::ReportKeptError()
{
    if (m_error != nullptr) {
        m_app.ReportError(std::exchange(m_error, nullptr));
    }
}

void CDialog::KeepError(std::exception_ptr error) noexcept
{
    if (m_error == nullptr) {
        m_error = std::move(error);
        // Wakes the loop where the message was sent, not posted.
        ::PostMessageW(Handle(), WM_NULL, 0, 0);
    }
}

bool CDialog::PreTranslateMessage(MSG& message)
{
    return ::IsDialogMessageW(Handle(), &message) != FALSE;
}

bool CDialog::OnInitDialog()
{
    UpdateData(ExchangeDirection::ToControls);
    return true;
}

void CDialog::DoDataExchange(CDataExchange& /*exchange*/) {}

bool CDialog::UpdateData(ExchangeDirection direction)
{
    try {
        CDataExchange exchange{Handle(), direction};
        DoDataExchange(exchange);
        return true;
    } catch (const ExchangeRefused&) {
        return false;
    }
}

bool CDialog::OnCommand(WORD id)
{
    switch (id) {
    case IDOK: OnOK(); return true;
    case IDCANCEL: OnCancel(); return true;
    default: return false;
    }
}

void CDialog::OnOK()
{
    if (UpdateData(ExchangeDirection::ToMembers)) {
        EndDialog(IDOK);
    }
}

void CDialog::OnCancel()
{
    EndDialog(IDCANCEL);
}

void CDialog::EndDialog(INT_PTR result)
{
    m_result = result;
    m_isRunning = false;
    ::PostMessageW(Handle(), WM_NULL, 0, 0);
}

bool CDialog::PassToOwner(WORD id)
{
    const HWND owner = m_owner != nullptr ? m_owner->Handle() : nullptr;
    if (owner == nullptr) {
        return false;
    }
    ::SendMessageW(owner, WM_COMMAND, id, 0);
    // A message box of the owner leaves the owner active, which is disabled below this dialog: keys would reach nobody.
    if (Handle() != nullptr && ::GetActiveWindow() == owner) {
        ::SetActiveWindow(Handle());
    }
    return true;
}

LRESULT CDialog::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_COMMAND: {
        if (Reflect(message, wParam, lParam)) {
            return TRUE;
        }
        const WORD source = HIWORD(wParam);
        if ((source == FromMenuOrClick || source == FromAccelerator) && OnCommand(LOWORD(wParam))) {
            return TRUE;
        }
        break;
    }
    case WM_DRAWITEM:
        if (Reflect(message, wParam, lParam)) {
            return TRUE;
        }
        break;
    case WM_SYSCOLORCHANGE:
        // Only windows that stand by themselves are told by the system.
        ::EnumChildWindows(Handle(), &TellOfColours, 0);
        break;
    case WM_SETCURSOR:
        if (m_app.IsWaiting()) {
            ::SetCursor(::LoadCursorW(nullptr, IDC_WAIT));
            return TRUE;
        }
        break;
    default: break;
    }
    return Default(message, wParam, lParam);
}

LRESULT CDialog::Default(UINT /*message*/, WPARAM /*wParam*/, LPARAM /*lParam*/)
{
    m_isDefault = true;
    return 0;
}

INT_PTR CDialog::Answer(UINT message, WPARAM wParam, LPARAM lParam) noexcept
{
    if (message == WM_INITDIALOG) {
        const LRESULT chooseFocus = Guarded(FALSE, [this] {
            RECT made{};
            ::GetWindowRect(Handle(), &made);
            const bool isFocusLeft = OnInitDialog();
            RECT now{};
            ::GetWindowRect(Handle(), &now);
            if (::EqualRect(&made, &now) != FALSE) {
                CenterWindow();
            }
            return static_cast<LRESULT>(isFocusLeft);
        });
        return chooseFocus;
    }
    // A handler may cause further messages to this dialog; each keeps its own mark.
    const bool outerMark = std::exchange(m_isDefault, false);
    const LRESULT result = Guarded(0, [=, this] { return WindowProc(message, wParam, lParam); });
    if (std::exchange(m_isDefault, outerMark)) {
        return FALSE;
    }
    ::SetWindowLongPtrW(Handle(), DWLP_MSGRESULT, result);
    return message == WM_QUERYDRAGICON ? result : TRUE; // one of the few that take their answer directly
}

INT_PTR CALLBACK CDialog::Thunk(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept
{
    if (message == WM_INITDIALOG) {
        reinterpret_cast<CDialog*>(lParam)->Attach(window);
        // Looked up for every message, so at the quickest place there is.
        ::SetWindowLongPtrW(window, DWLP_USER, lParam);
    }
    auto* const self = reinterpret_cast<CDialog*>(::GetWindowLongPtrW(window, DWLP_USER));
    if (self == nullptr) {
        return FALSE;
    }
    if (message == WM_NCDESTROY) {
        ::SetWindowLongPtrW(window, DWLP_USER, 0);
        // The loop may be waiting for a message to a window that somebody else destroyed.
        ::PostThreadMessageW(::GetCurrentThreadId(), WM_NULL, 0, 0);
        self->Detach();
        self->PostNcDestroy();
        return FALSE;
    }
    return self->Answer(message, wParam, lParam);
}

} // namespace sitekeeper
