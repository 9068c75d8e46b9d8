// All looks of the bitmap button on one sheet, for looking at: pictures/button-looks.bmp.
#include "controls/ButtonIcons.h"
#include "controls/ButtonPainter.h"
#include "res/ResourceIds.h"
#include "support/MemoryBitmap.h"

#include <windows.h>

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace sitekeeper {
namespace {

struct Look
{
    const char* name = "";
    ButtonState state; // pressed, focused, disabled, hovered
};

constexpr Look Looks[] = {
    {"normal", {false, false, false, false, false}}, {"focused", {false, true, false, false, false}},
    {"pressed", {true, false, false, false, false}}, {"pressed and focused", {true, true, false, false, false}},
    {"hovered", {false, false, false, true, false}}, {"disabled", {false, false, true, false, false}},
};

struct Face
{
    bool isFlat;
    int width;
    ImageAlignment alignment;
    const wchar_t* caption;
    UINT icon;
};

constexpr Face Faces[] = {
    {false, 26, ImageAlignment::BesideText, L"", IDI_BROWSE},
    {false, 26, ImageAlignment::BesideText, L"", IDI_OPEN_FOLDER},
    {true, 26, ImageAlignment::BesideText, L"", IDI_OPEN_FOLDER},
    {false, 90, ImageAlignment::BesideText, L"&Browse", IDI_BROWSE},
    {false, 90, ImageAlignment::AboveText, L"&Browse", IDI_BROWSE},
    {false, 90, ImageAlignment::RightOfText, L"&Browse", IDI_BROWSE},
    {true, 90, ImageAlignment::BesideText, L"Two\nlines", IDI_PROGRAM},
};

constexpr int CellWidth = 98;
constexpr int CellHeight = 48;
constexpr int ButtonHeight = 40;

ButtonStyle StyleOf(const Face& face)
{
    const ButtonColours system{::GetSysColor(COLOR_BTNFACE), ::GetSysColor(COLOR_BTNTEXT)};
    ButtonStyle style;
    style.isFlat = face.isFlat;
    style.alignment = face.alignment;
    style.hovered = style.normal = style.focused = system;
    return style;
}

void PaintRow(HDC dc, const Face& face, int top)
{
    const UniqueIcon icon(static_cast<HICON>(
        ::LoadImageW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(face.icon), IMAGE_ICON, 16, 16, LR_DEFAULTCOLOR)));
    const UniqueFont font(::CreateFontW(-12, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                                        OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH,
                                        L"Segoe UI"));
    int left = 4;
    for (const Look& look : Looks) {
        PaintButton(dc, {left, top, left + face.width, top + (face.width < 40 ? 22 : ButtonHeight)}, StyleOf(face),
                    look.state, {icon.get(), {16, 16}, face.caption, font.get()});
        left += CellWidth;
    }
    // Last the two copies, as icon-out shows them.
    for (const IconCopy copy : {IconCopy::Darker, IconCopy::Grey}) {
        const UniqueIcon copied = MakeIconCopy(icon.get(), copy);
        PaintButton(dc, {left, top, left + face.width, top + (face.width < 40 ? 22 : ButtonHeight)}, StyleOf(face), {},
                    {copied.get(), {16, 16}, face.caption, font.get()});
        left += CellWidth;
    }
}

TEST(ButtonSheetTest, ShowsEveryLook)
{
    constexpr int Columns = static_cast<int>(std::size(Looks)) + 2;
    constexpr int Rows = static_cast<int>(std::size(Faces));
    MemoryBitmap sheet(Columns * CellWidth, Rows * CellHeight, ::GetSysColor(COLOR_3DFACE));
    int top = 4;
    for (const Face& face : Faces) {
        PaintRow(sheet.Dc(), face, top);
        top += CellHeight;
    }
    sheet.Save(L"button-looks");

    // No look of a 3D button can be mistaken for another one, but for the hovered one, which only a flat button has.
    const auto cell = [&sheet](int column) {
        MemoryBitmap part(CellWidth, CellHeight, 0);
        ::BitBlt(part.Dc(), 0, 0, CellWidth, CellHeight, sheet.Dc(), column * CellWidth, 0, SRCCOPY);
        return part.Pixels();
    };
    constexpr int Hovered = 4;
    for (int a = 0; a < Columns; ++a) {
        for (int b = a + 1; b < Columns; ++b) {
            EXPECT_EQ(cell(a) == cell(b), a == 0 && b == Hovered) << a << " and " << b;
        }
    }
}

} // namespace
} // namespace sitekeeper
