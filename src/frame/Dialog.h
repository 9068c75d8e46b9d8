// A modal dialog made from a template.
#pragma once

#include "frame/DataExchange.h"
#include "frame/WinApp.h"
#include "frame/Wnd.h"

#include <windows.h>

#include <algorithm>
#include <exception>
#include <iterator>
#include <span>
#include <string>

namespace sitekeeper {

/// One row of a dialog's command table: the command or control id, and the handler. A reader sees every command of a
/// dialog in one table.
template <typename Dialog>
struct CommandRow
{
    WORD id;
    void (Dialog::*handler)();
};

class CDialog : public CWnd
{
public:
    /// `app` must outlive the dialog; `owner` is disabled while the dialog runs, null for none.
    CDialog(CWinApp& app, UINT templateId, const CWnd* owner = nullptr);
    CDialog(const CDialog&) = delete;
    CDialog& operator=(const CDialog&) = delete;
    ~CDialog() override;

    /// Makes the dialog and runs it until it ends; the result is what EndDialog was given, or -1 when the thread is
    /// told to quit. An error raised by its initialisation destroys the dialog unseen and is raised here, as is
    /// std::runtime_error when the system cannot make it. An error that a later handler raises is reported once by the
    /// application, after the message, and the dialog goes on.
    INT_PTR DoModal();

    void KeepError(std::exception_ptr error) noexcept override;
    bool PreTranslateMessage(MSG& message) override;

protected:
    /// The dialog's window was made. The inherited initialisation moves the members into the controls. True lets the
    /// system choose the focus.
    virtual bool OnInitDialog();

    /// Names each control with its member, for both directions.
    virtual void DoDataExchange(CDataExchange& exchange);

    /// Moves the controls into the members or back. False when a control holds what its member cannot; that member and
    /// those named after it are left as they are.
    bool UpdateData(ExchangeDirection direction);

    /// A command of a menu or control. True when the dialog answers it. The inherited answer knows OK and Cancel.
    virtual bool OnCommand(WORD id);

    /// OK and Cancel. The inherited OK reads the controls and ends the dialog, unless a control holds what its member
    /// cannot.
    virtual void OnOK();
    virtual void OnCancel();

    /// Ends the dialog with `result`, now or when the innermost loop returns.
    void EndDialog(INT_PTR result);

    /// Looks `id` up in `table` and runs its handler. True when there was one.
    template <typename Dialog, std::size_t Size>
    static bool RunCommand(Dialog& dialog, const CommandRow<Dialog> (&table)[Size], WORD id)
    {
        const auto* const row =
            std::find_if(std::begin(table), std::end(table), [id](const auto& each) { return each.id == id; });
        if (row == std::end(table)) {
            return false;
        }
        (dialog.*row->handler)();
        return true;
    }

    /// Hands a command of this dialog on to its owner, which answers it at once. Where that left the owner active, this
    /// dialog is made active again. False when there is no owner.
    bool PassToOwner(WORD id);

    /// The window of control `id`; null when there is none.
    [[nodiscard]] HWND Item(int id) const { return ::GetDlgItem(Handle(), id); }

    [[nodiscard]] CWinApp& App() const noexcept { return m_app; }

    /// A message was handled by the dialog itself and `result` is the answer; otherwise the system's dialog answers.
    /// Here a dialog names the messages it handles; the inherited version handles the initialisation and the commands.
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    /// Default processing, marked as such for the system's dialog.
    LRESULT Default(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    static INT_PTR CALLBACK Thunk(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

    INT_PTR Answer(UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    void Make();
    void RunLoop();
    void ReportKeptError();

    CWinApp& m_app;
    UINT m_templateId;
    const CWnd* m_owner;
    INT_PTR m_result = -1;
    bool m_isRunning = false;
    bool m_isDefault = false;
    std::exception_ptr m_error;
};

} // namespace sitekeeper
