// The bitmap button: a push button that shows an icon beside or instead of its caption.
#pragma once

#include "controls/ButtonIcons.h"
#include "controls/ButtonPainter.h"
#include "controls/ButtonSound.h"
#include "controls/ButtonTip.h"
#include "frame/Wnd.h"
#include "win32/Handles.h"

#include <windows.h>

#include <optional>
#include <string>
#include <utility>

namespace sitekeeper {

/// What an operation of the button reports; the numbers are fixed.
enum class ButtonResult
{
    Done = 0,
    BadIcon = 1,
    BadPressedStyle = 6
};

/// Draws its own background, border, image, caption and focus. In the flat look, which is the default, it has no border
/// until the mouse is over it; the 3D look never follows the mouse. Taking over a button makes it owner-drawn; a check
/// box becomes a button that stays down while it is checked.
///
/// The operations that take a `repaint` flag do nothing to the screen without it.
class CButtonST : public CWnd
{
public:
    /// Icon-out of SetIcon: none, or a copy that the button makes of icon-in. A copy that cannot be made is none.
    static constexpr int NoIcon = 0;
    static constexpr int GreyCopy = -2;
    static constexpr int DarkerCopy = -3;

    CButtonST();

    // Image. Icon-in is shown while the button is pressed or hovered, icon-out, when there is one, otherwise.

    /// Loads icon group `iconIn` of `resources` in the given size, and icon-out: another group, or one of the values
    /// above, which need no size. BadIcon when a group is missing; the button has no image then. Repaints.
    ButtonResult SetIcon(HINSTANCE resources, UINT iconIn, int widthIn, int heightIn, int iconOut = NoIcon,
                         int widthOut = 0, int heightOut = 0);

    /// Takes both icons as its property and lets go of those it had; null for none. They must not be the ones it has.
    /// BadIcon when one of them cannot be measured; the button has no image then. Repaints otherwise.
    ButtonResult SetIcon(HICON iconIn, HICON iconOut = nullptr);

    /// The same with bitmaps; pixels of the transparent colour let the background through. The bitmaps stay the
    /// caller's.
    ButtonResult SetBitmaps(HBITMAP bitmapIn, std::optional<COLORREF> transparentIn, HBITMAP bitmapOut = nullptr,
                            std::optional<COLORREF> transparentOut = std::nullopt);

    // Look

    void SetFlat(bool isFlat, bool repaint);
    void SetAlign(ImageAlignment alignment, bool repaint);

    /// How the image moves while the button is pressed: style 0 by (1, 1), style 1 by (0, 2). BadPressedStyle for
    /// another one, which changes nothing.
    ButtonResult SetPressedStyle(int style, bool repaint);

    void SetDrawBorder(bool drawsBorder, bool repaint);
    void SetDrawFlatFocus(bool drawsFlatFocus, bool repaint);

    /// The parent's background shows through where the button would fill its own.
    void SetTransparent(bool isTransparent, bool repaint);

    /// All six colours; SetDefaultColors takes the system's, as a change of the system's colours does.
    void SetColors(const ButtonColours& hovered, const ButtonColours& normal, const ButtonColours& focused,
                   bool repaint);
    void SetDefaultColors(bool repaint);

    /// Follow the mouse also while no window of the program is active.
    void SetAlwaysTrack(bool alwaysTracks) noexcept { m_alwaysTracks = alwaysTracks; }

    // Tooltip

    /// The tip of the whole button, and whether it is shown. Needs the window.
    void SetTooltipText(const std::wstring& text, bool activate);

    /// The button's tooltip control; null before it is needed for the first time.
    [[nodiscard]] HWND Tooltip() const noexcept { return m_tip.Handle(); }

    // Check box; without effect, and unchecked, in any other button

    void SetCheck(bool isChecked, bool repaint);
    [[nodiscard]] bool GetCheck() const noexcept { return m_isChecked; }
    [[nodiscard]] bool IsCheckBox() const noexcept { return m_style.isCheckBox; }

    // What a click does beside telling the dialog

    /// Opens this text, up to 260 characters of it, with the shell; null for nothing.
    void SetURL(const wchar_t* url);
    [[nodiscard]] const std::wstring& GetURL() const noexcept { return m_url; }

    /// Shows the first popup of this menu bar below the button instead of telling the dialog. Its commands go to
    /// `receiver`. Empty for none.
    void SetMenu(UniqueMenu menu, HWND receiver);

    /// The files or system sound events to play when the mouse comes over the flat button, and on a click; empty for
    /// none.
    void SetSounds(std::wstring hoverSound, std::wstring clickSound);

    /// The cursor over the button; empty for the usual one.
    void SetCursor(UniqueCursor cursor) noexcept { m_cursor = std::move(cursor); }
    void SetHandCursor();

    // Drawing

    /// Draws the button into `rectangle`, as every way of drawing it does. `itemState` is that of a draw request
    /// (ODS_...) and becomes the button's state.
    void Paint(HDC dc, const RECT& rectangle, UINT itemState);

    [[nodiscard]] const ButtonStyle& Style() const noexcept { return m_style; }
    [[nodiscard]] const ButtonState& State() const noexcept { return m_state; }

    bool PreTranslateMessage(MSG& message) override;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    void DrawItem(const DRAWITEMSTRUCT& request) override;
    bool OnReflectedCommand(WORD notification) override;
    void OnAttached() override;

    /// Opens a text with the shell, plays a sound.
    virtual void OpenLink(const std::wstring& url);
    virtual void PlaySoundOf(const std::wstring& name);

private:
    struct Image
    {
        UniqueIcon icon;
        SIZE size{};
    };

    ButtonResult TakeImages(UniqueIcon iconIn, UniqueIcon iconOut);
    [[nodiscard]] const Image& CurrentImage() const noexcept;
    void CopyParentBackground(HDC dc, const RECT& rectangle) const;

    void ShowMenu() const;

    void OnMouseMove(WPARAM keys, POINT position);
    void StartHover();
    void EndHover();
    LRESULT OnSetStyle(WPARAM style, LPARAM repaint);
    [[nodiscard]] LRESULT DialogCode() const noexcept;
    void RepaintIf(bool repaint) const;

    ButtonStyle m_style;
    ButtonState m_state;
    bool m_alwaysTracks = true;
    bool m_isChecked = false;
    Image m_imageIn;
    Image m_imageOut;
    ButtonTip m_tip;
    std::wstring m_url;
    UniqueMenu m_menu;
    HWND m_menuReceiver = nullptr;
    UniqueCursor m_cursor;
    std::wstring m_hoverSound;
    std::wstring m_clickSound;
    ButtonSound m_sound;
};

} // namespace sitekeeper
