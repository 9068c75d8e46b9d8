// A window of the system and the object that answers for it.
#pragma once

#include <windows.h>

#include <exception>
#include <string>
#include <utility>

namespace sitekeeper {

/// Knows one window while that window exists: one that it created, or a control that it took over. The window belongs
/// to the system; the object forgets it when the system destroys it (WM_NCDESTROY). An object that dies before its
/// window gives the window back to its class.
class CWnd
{
public:
    CWnd() noexcept = default;
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;
    virtual ~CWnd();

    [[nodiscard]] HWND Handle() const noexcept { return m_handle; }

    /// The object that answers for a window of this process; null when none does.
    [[nodiscard]] static CWnd* FromHandle(HWND window) noexcept;

    /// Takes over an existing control of this thread: its messages come here first. False when the control does not
    /// exist or another object has it; this object must not have a window yet.
    bool SubclassWindow(HWND control);

    /// What the window is called for people who do not see it, in place of what the system would say of it. For a
    /// control that says nothing itself and has no label before it. Nobody sees the name.
    void SetAccessibleName(std::wstring name) { m_accessibleName = std::move(name); }

    /// Destroys the window, if there is one.
    void DestroyWindow();

    /// Centres the window over its owner, or in the work area of its monitor when it has none or the owner is hidden
    /// or minimised; never beyond the work area.
    void CenterWindow();

    /// Looks at a message before it is translated and dispatched, for this window or for one inside it. True when
    /// nothing more is to be done with it.
    virtual bool PreTranslateMessage(MSG& message);

    /// Takes an error that a handler raised, since none may cross a system frame. A child hands it on to the window
    /// around it; whoever runs the message loop reports it, the first one when there are several.
    virtual void KeepError(std::exception_ptr error) noexcept;

protected:
    /// Answers one message. The inherited answer hands control messages back to the control's own object and leaves
    /// the rest to default processing.
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);

    /// Default processing: of the control's class, or of the system.
    virtual LRESULT Default(UINT message, WPARAM wParam, LPARAM lParam);

    /// The owner of this control's drawing asks it to draw itself (WM_DRAWITEM, sent back by its dialog).
    virtual void DrawItem(const DRAWITEMSTRUCT& request);

    /// The control's own notification, sent back by its dialog. True when the dialog is not to see it.
    virtual bool OnReflectedCommand(WORD notification);

    /// The control was just taken over.
    virtual void OnAttached();

    /// The window is gone; the object may delete itself here.
    virtual void PostNcDestroy();

    /// While one of these lives, messages to a control that was taken over go straight to the control: for thousands of
    /// them, where looking up the object for each would cost more than the work itself. The window must outlive it.
    class SubclassPause
    {
    public:
        explicit SubclassPause(const CWnd& window);
        SubclassPause(const SubclassPause&) = delete;
        SubclassPause& operator=(const SubclassPause&) = delete;
        ~SubclassPause();

    private:
        const CWnd& m_window;
    };

    /// Registers a window class of this frame with the standard arrow, no background and no icon, once for each name,
    /// and creates a window of it. False when either fails.
    bool CreateOfOwnClass(HINSTANCE instance, const wchar_t* className, DWORD style, const RECT& position, HWND owner);

    /// Binds the object to a window that is being made, or lets go of it.
    void Attach(HWND window);
    void Detach() noexcept;

    /// Sends a control's drawing or notification message back to the object that answers for the control. True when
    /// that object took it.
    static bool Reflect(UINT message, WPARAM wParam, LPARAM lParam);

    /// Runs `handler` and keeps what it raises; `fallback` is the answer then.
    template <typename Handler>
    LRESULT Guarded(LRESULT fallback, Handler handler) noexcept
    {
        try {
            return handler();
        } catch (...) {
            KeepError(std::current_exception());
            return fallback;
        }
    }

private:
    static LRESULT CALLBACK OwnClassThunk(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    static LRESULT CALLBACK SubclassThunk(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                          DWORD_PTR object) noexcept;

    HWND m_handle = nullptr;
    std::wstring m_accessibleName;
    bool m_isSubclassed = false;
};

/// The text of a window, of any length.
[[nodiscard]] std::wstring TextOf(HWND window);

} // namespace sitekeeper
