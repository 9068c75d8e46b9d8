#include "controls/ButtonST.h"

#include <windows.h>

#include <commctrl.h>
#include <shellapi.h>

#include <algorithm>
#include <utility>

namespace sitekeeper {
namespace {

constexpr std::size_t LongestLink = 260;

UniqueIcon LoadIconOf(HINSTANCE resources, UINT id, int width, int height)
{
    return UniqueIcon(
        static_cast<HICON>(::LoadImageW(resources, MAKEINTRESOURCEW(id), IMAGE_ICON, width, height, LR_DEFAULTCOLOR)));
}

} // namespace

CButtonST::CButtonST()
{
    SetDefaultColors(false);
}

// --- image -----------------------------------------------------------------------------------------------------

ButtonResult CButtonST::SetIcon(HINSTANCE resources, UINT iconIn, int widthIn, int heightIn, int iconOut, int widthOut,
                                int heightOut)
{
    UniqueIcon in = LoadIconOf(resources, iconIn, widthIn, heightIn);
    UniqueIcon out;
    bool isLoaded = static_cast<bool>(in);
    switch (iconOut) {
    case NoIcon: break;
    case DarkerCopy: out = MakeIconCopy(in.get(), IconCopy::Darker); break;
    case GreyCopy: out = MakeIconCopy(in.get(), IconCopy::Grey); break;
    default:
        out = LoadIconOf(resources, static_cast<UINT>(iconOut), widthOut, heightOut);
        isLoaded = isLoaded && out;
        break;
    }
    if (!isLoaded) {
        m_imageIn = {};
        m_imageOut = {};
        return ButtonResult::BadIcon;
    }
    return TakeImages(std::move(in), std::move(out));
}

ButtonResult CButtonST::SetIcon(HICON iconIn, HICON iconOut)
{
    return TakeImages(UniqueIcon(iconIn), UniqueIcon(iconOut != iconIn ? iconOut : nullptr));
}

ButtonResult CButtonST::SetBitmaps(HBITMAP bitmapIn, std::optional<COLORREF> transparentIn, HBITMAP bitmapOut,
                                   std::optional<COLORREF> transparentOut)
{
    UniqueIcon in = MakeIconOfBitmap(bitmapIn, transparentIn);
    UniqueIcon out = MakeIconOfBitmap(bitmapOut, transparentOut);
    if ((bitmapIn != nullptr && !in) || (bitmapOut != nullptr && !out)) {
        m_imageIn = {};
        m_imageOut = {};
        return ButtonResult::BadIcon;
    }
    return TakeImages(std::move(in), std::move(out));
}

ButtonResult CButtonST::TakeImages(UniqueIcon iconIn, UniqueIcon iconOut)
{
    m_imageIn = {};
    m_imageOut = {};
    const std::optional<SIZE> sizeIn = iconIn ? MeasureIcon(iconIn.get()) : SIZE{};
    const std::optional<SIZE> sizeOut = iconOut ? MeasureIcon(iconOut.get()) : SIZE{};
    if (!sizeIn || !sizeOut) {
        return ButtonResult::BadIcon;
    }
    m_imageIn = {std::move(iconIn), *sizeIn};
    m_imageOut = {std::move(iconOut), *sizeOut};
    RepaintIf(true);
    return ButtonResult::Done;
}

const CButtonST::Image& CButtonST::CurrentImage() const noexcept
{
    const bool isOut = !m_state.isPressed && (m_style.isCheckBox || !m_state.isHovered);
    return isOut && m_imageOut.icon ? m_imageOut : m_imageIn;
}

// --- look ------------------------------------------------------------------------------------------------------

void CButtonST::RepaintIf(bool repaint) const
{
    if (repaint && Handle() != nullptr) {
        ::InvalidateRect(Handle(), nullptr, TRUE);
    }
}

void CButtonST::SetFlat(bool isFlat, bool repaint)
{
    m_style.isFlat = isFlat;
    m_state.isHovered = m_state.isHovered && isFlat;
    RepaintIf(repaint);
}

void CButtonST::SetAlign(ImageAlignment alignment, bool repaint)
{
    m_style.alignment = alignment;
    RepaintIf(repaint);
}

ButtonResult CButtonST::SetPressedStyle(int style, bool repaint)
{
    switch (style) {
    case 0: m_style.pressedOffset = {1, 1}; break;
    case 1: m_style.pressedOffset = {0, 2}; break;
    default: return ButtonResult::BadPressedStyle;
    }
    RepaintIf(repaint);
    return ButtonResult::Done;
}

void CButtonST::SetDrawBorder(bool drawsBorder, bool repaint)
{
    m_style.drawsBorder = drawsBorder;
    RepaintIf(repaint);
}

void CButtonST::SetDrawFlatFocus(bool drawsFlatFocus, bool repaint)
{
    m_style.drawsFlatFocus = drawsFlatFocus;
    RepaintIf(repaint);
}

void CButtonST::SetTransparent(bool isTransparent, bool repaint)
{
    m_style.isTransparent = isTransparent;
    RepaintIf(repaint);
}

void CButtonST::SetColors(const ButtonColours& hovered, const ButtonColours& normal, const ButtonColours& focused,
                          bool repaint)
{
    m_style.hovered = hovered;
    m_style.normal = normal;
    m_style.focused = focused;
    RepaintIf(repaint);
}

void CButtonST::SetDefaultColors(bool repaint)
{
    const ButtonColours system{::GetSysColor(COLOR_BTNFACE), ::GetSysColor(COLOR_BTNTEXT)};
    SetColors(system, system, system, repaint);
}

// --- tooltip ---------------------------------------------------------------------------------------------------

void CButtonST::SetTooltipText(const std::wstring& text, bool activate)
{
    if (Handle() != nullptr) {
        m_tip.SetText(Handle(), text, activate);
    }
}

bool CButtonST::PreTranslateMessage(MSG& message)
{
    m_tip.Ensure(Handle());
    m_tip.Relay(message);
    if (message.message == WM_LBUTTONDBLCLK) {
        message.message = WM_LBUTTONDOWN; // a fast double click counts as two clicks
    }
    return CWnd::PreTranslateMessage(message);
}

// --- check box, clicks -----------------------------------------------------------------------------------------

void CButtonST::SetCheck(bool isChecked, bool repaint)
{
    if (m_style.isCheckBox) {
        m_isChecked = isChecked;
        RepaintIf(repaint);
    }
}

void CButtonST::SetURL(const wchar_t* url)
{
    m_url = url != nullptr ? url : L"";
    m_url.resize(std::min(m_url.size(), LongestLink));
}

void CButtonST::SetMenu(UniqueMenu menu, HWND receiver)
{
    m_menu = std::move(menu);
    m_menuReceiver = receiver;
}

void CButtonST::SetSounds(std::wstring hoverSound, std::wstring clickSound)
{
    m_hoverSound = std::move(hoverSound);
    m_clickSound = std::move(clickSound);
}

void CButtonST::SetHandCursor()
{
    m_cursor.reset(::CopyIcon(::LoadCursorW(nullptr, IDC_HAND)));
}

bool CButtonST::OnReflectedCommand(WORD notification)
{
    if (notification != BN_CLICKED) {
        return false;
    }
    SetCheck(!m_isChecked, true);
    if (!m_clickSound.empty()) {
        PlaySoundOf(m_clickSound);
    }
    if (m_menu) {
        ShowMenu();
        return true;
    }
    if (!m_url.empty()) {
        OpenLink(m_url);
    }
    return false;
}

void CButtonST::OpenLink(const std::wstring& url)
{
    ::ShellExecuteW(::GetAncestor(Handle(), GA_ROOT), L"open", url.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
}

void CButtonST::PlaySoundOf(const std::wstring& name)
{
    m_sound.Play(name);
}

void CButtonST::ShowMenu() const
{
    TPMPARAMS avoided{};
    avoided.cbSize = sizeof avoided;
    ::GetWindowRect(Handle(), &avoided.rcExclude);
    ::TrackPopupMenuEx(::GetSubMenu(m_menu.get(), 0), TPM_LEFTALIGN | TPM_LEFTBUTTON | TPM_VERTICAL,
                       avoided.rcExclude.left, avoided.rcExclude.bottom, m_menuReceiver, &avoided);
}

// --- drawing ---------------------------------------------------------------------------------------------------

void CButtonST::DrawItem(const DRAWITEMSTRUCT& request)
{
    Paint(request.hDC, request.rcItem, request.itemState);
}

void CButtonST::Paint(HDC dc, const RECT& rectangle, UINT itemState)
{
    const bool isSelected = (itemState & ODS_SELECTED) != 0;
    m_state.isPressed = isSelected || (m_style.isCheckBox && m_isChecked);
    m_state.isFocused = (itemState & ODS_FOCUS) != 0;
    m_state.isDisabled = (itemState & ODS_DISABLED) != 0;
    m_state.hidesAccelerator = (itemState & ODS_NOACCEL) != 0;

    const Image& image = CurrentImage();
    ButtonFace face{image.icon.get(), image.size, {}, nullptr};
    if (Handle() != nullptr) {
        face.caption = TextOf(Handle());
        face.font = reinterpret_cast<HFONT>(::SendMessageW(Handle(), WM_GETFONT, 0, 0));
    }
    if (m_style.isTransparent) {
        CopyParentBackground(dc, rectangle);
    }
    PaintButton(dc, rectangle, m_style, m_state, face);
}

void CButtonST::CopyParentBackground(HDC dc, const RECT& rectangle) const
{
    const HWND parent = Handle() != nullptr ? ::GetParent(Handle()) : nullptr;
    if (parent == nullptr) {
        return;
    }
    // The parent draws itself, moved so that the part of it under the button falls into the rectangle.
    const int saved = ::SaveDC(dc);
    POINT origin{0, 0};
    ::MapWindowPoints(Handle(), parent, &origin, 1);
    ::IntersectClipRect(dc, rectangle.left, rectangle.top, rectangle.right, rectangle.bottom);
    ::OffsetViewportOrgEx(dc, rectangle.left - origin.x, rectangle.top - origin.y, nullptr);
    ::SendMessageW(parent, WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc), 0);
    ::SendMessageW(parent, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc), PRF_CLIENT);
    ::RestoreDC(dc, saved);
}

// --- messages --------------------------------------------------------------------------------------------------

void CButtonST::OnAttached()
{
    const LONG_PTR kind = ::GetWindowLongPtrW(Handle(), GWL_STYLE) & BS_TYPEMASK;
    m_style.isDefault = kind == BS_DEFPUSHBUTTON;
    m_style.isCheckBox = kind == BS_CHECKBOX || kind == BS_AUTOCHECKBOX;
    m_isChecked = m_style.isCheckBox && Default(BM_GETCHECK, 0, 0) == BST_CHECKED;
    Default(BM_SETSTYLE, BS_OWNERDRAW, TRUE);
}

LRESULT CButtonST::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case BM_GETCHECK: return m_isChecked ? BST_CHECKED : BST_UNCHECKED;
    case BM_SETCHECK: SetCheck(wParam != BST_UNCHECKED, true); return 0;
    case BM_SETSTYLE: return OnSetStyle(wParam, lParam);
    case WM_GETDLGCODE: return DialogCode();
    case WM_MOUSEMOVE:
        OnMouseMove(wParam, {static_cast<SHORT>(LOWORD(lParam)), static_cast<SHORT>(HIWORD(lParam))});
        break;
    case WM_MOUSELEAVE:
    case WM_KILLFOCUS:
    case WM_CANCELMODE: EndHover(); break;
    case WM_ACTIVATE:
        if (LOWORD(wParam) == WA_INACTIVE) {
            EndHover();
        }
        break;
    case WM_ENABLE:
        if (wParam == FALSE) {
            EndHover(); // no more mouse messages come
        }
        CWnd::WindowProc(message, wParam, lParam);
        RepaintIf(true);
        return 0;
    case WM_SETCURSOR:
        if (m_cursor) {
            ::SetCursor(m_cursor.get());
            return TRUE;
        }
        break;
    case WM_SYSCOLORCHANGE: SetDefaultColors(true); break;
    case WM_DESTROY: m_tip.Drop(); break;
    default: break;
    }
    return CWnd::WindowProc(message, wParam, lParam);
}

void CButtonST::OnMouseMove(WPARAM keys, POINT position)
{
    if (!m_style.isFlat || ((keys & MK_LBUTTON) != 0 && !m_state.isHovered)) {
        return;
    }
    ::ClientToScreen(Handle(), &position);
    if (::WindowFromPoint(position) != Handle()) {
        EndHover();
    } else if (!m_state.isHovered && (m_alwaysTracks || ::GetActiveWindow() != nullptr)) {
        StartHover();
    }
}

void CButtonST::StartHover()
{
    m_state.isHovered = true;
    RepaintIf(true);
    if (!m_hoverSound.empty()) {
        PlaySoundOf(m_hoverSound);
    }
    TRACKMOUSEEVENT tracking{};
    tracking.cbSize = sizeof tracking;
    tracking.dwFlags = TME_LEAVE;
    tracking.hwndTrack = Handle();
    ::_TrackMouseEvent(&tracking);
}

void CButtonST::EndHover()
{
    if (std::exchange(m_state.isHovered, false)) {
        RepaintIf(true);
    }
}

LRESULT CButtonST::OnSetStyle(WPARAM style, LPARAM repaint)
{
    // The dialog moves the default mark from button to button this way; the drawing stays ours.
    m_style.isDefault = !m_style.isCheckBox && (style & BS_TYPEMASK) == BS_DEFPUSHBUTTON;
    return Default(BM_SETSTYLE, (style & ~static_cast<WPARAM>(BS_TYPEMASK)) | BS_OWNERDRAW, repaint);
}

LRESULT CButtonST::DialogCode() const noexcept
{
    if (m_style.isCheckBox) {
        return DLGC_BUTTON;
    }
    return DLGC_BUTTON | (m_style.isDefault ? DLGC_DEFPUSHBUTTON : DLGC_UNDEFPUSHBUTTON);
}

} // namespace sitekeeper
