// The icons of the bitmap button: measures, copies, icons made of bitmaps.
#include "controls/ButtonIcons.h"

#include "res/ResourceIds.h"
#include "support/GuiResources.h"
#include "support/IconPixels.h"
#include "support/MemoryBitmap.h"

#include <windows.h>

#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace sitekeeper {
namespace {

TEST(DarkenColorTest, TakesTheFactorOffEachChannelAndDropsFractions)
{
    struct Row
    {
        COLORREF colour;
        double factor;
        COLORREF expected;
    };
    const Row rows[] = {
        {RGB(255, 255, 255), 0.25, RGB(191, 191, 191)}, // 191.25
        {RGB(100, 200, 40), 0.25, RGB(75, 150, 30)},
        {RGB(1, 2, 3), 0.25, RGB(0, 1, 2)}, // 0.75, 1.5, 2.25
        {RGB(255, 128, 1), 0.5, RGB(127, 64, 0)},
        {RGB(255, 128, 1), 1.0, RGB(0, 0, 0)},
        {RGB(0, 0, 0), 0.25, RGB(0, 0, 0)},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(DarkenColor(row.colour, row.factor), row.expected) << row.colour << " by " << row.factor;
    }
}

TEST(DarkenColorTest, LeavesTheColourForAFactorOutOfRange)
{
    constexpr COLORREF Colour = RGB(10, 20, 30);
    for (const double factor : {0.0, -0.25, 1.0000001, 7.0, std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(DarkenColor(Colour, factor), Colour) << factor;
    }
}

TEST(GreyColorTest, WeighsTheChannelsAndDropsFractions)
{
    struct Row
    {
        COLORREF colour;
        int level;
    };
    const Row rows[] = {
        {RGB(255, 255, 255), 255}, {RGB(255, 0, 0), 76}, // 76.245
        {RGB(0, 255, 0), 149},                           // 149.685
        {RGB(0, 0, 255), 29},                            // 29.07
        {RGB(1, 1, 1), 1},         {RGB(0, 0, 8), 0},    // 0.912
        {RGB(10, 20, 30), 18},                           // 18.15
        {RGB(128, 128, 128), 128}, {RGB(0, 0, 0), 0},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(GreyColor(row.colour), RGB(row.level, row.level, row.level)) << row.colour;
    }
}

TEST(GreyColorTest, KeepsEveryGrey)
{
    for (int level = 0; level < 256; ++level) {
        EXPECT_EQ(GreyColor(RGB(level, level, level)), RGB(level, level, level));
    }
}

TEST(CopiedPixelTest, CarriesTheOpacityOverAndKeepsBlack)
{
    EXPECT_EQ(CopiedPixel(0x00FF8000, IconCopy::Darker), 0x00BF6000U);
    EXPECT_EQ(CopiedPixel(0x80FF8000, IconCopy::Darker), 0x80BF6000U);
    EXPECT_EQ(CopiedPixel(0x80FF0000, IconCopy::Grey), 0x804C4C4CU);
    for (const IconCopy copy : {IconCopy::Darker, IconCopy::Grey}) {
        EXPECT_EQ(CopiedPixel(0x00000000, copy), 0x00000000U);
        EXPECT_EQ(CopiedPixel(0xFF000000, copy), 0xFF000000U);
    }
}

TEST(MeasureIconTest, GivesTwiceTheHotSpot)
{
    const UniqueIcon icon = MakeTestIcon(6, 4, 0x00FF0000);
    const std::optional<SIZE> size = MeasureIcon(icon.get());
    ASSERT_TRUE(size);
    EXPECT_EQ(size->cx, 6);
    EXPECT_EQ(size->cy, 4);
}

TEST(MeasureIconTest, LosesTheOddPixel)
{
    const UniqueIcon icon = MakeTestIcon(7, 5, 0x00FF0000);
    const std::optional<SIZE> size = MeasureIcon(icon.get());
    ASSERT_TRUE(size);
    EXPECT_EQ(size->cx, 6);
    EXPECT_EQ(size->cy, 4);
}

TEST(MeasureIconTest, GivesNothingForWhatIsNoIcon)
{
    EXPECT_FALSE(MeasureIcon(nullptr));
    HICON dead = nullptr;
    {
        const UniqueIcon icon = MakeTestIcon(4, 4, 0x00FF0000);
        dead = icon.get();
    }
    EXPECT_FALSE(MeasureIcon(dead));
}

TEST(IconCopyTest, CopiesPixelByPixelWithTheSameMask)
{
    const std::vector<std::uint32_t> colours = {0x00FFFFFF, 0x00000000, 0x00FF0000, 0x0000FF00,
                                                0x000000FF, 0x00010203, 0x00C86432, 0x00000001};
    const UniqueIcon icon = MakeTestIcon(4, 2, colours, {{1, 0}, {3, 1}});
    for (const IconCopy copy : {IconCopy::Darker, IconCopy::Grey}) {
        const UniqueIcon copied = MakeIconCopy(icon.get(), copy);
        ASSERT_TRUE(copied);
        const IconPixels pixels = PixelsOf(copied.get());
        ASSERT_EQ(pixels.colours.size(), colours.size());
        for (std::size_t i = 0; i < colours.size(); ++i) {
            EXPECT_EQ(pixels.colours[i] & 0xFFFFFF, CopiedPixel(colours[i], copy)) << "pixel " << i;
        }
        EXPECT_EQ(pixels.isClear, PixelsOf(icon.get()).isClear);
    }
}

TEST(IconCopyTest, KeepsTheOpacityOfATranslucentIcon)
{
    const std::vector<std::uint32_t> colours = {0xFFFFFFFF, 0x80C86432, 0x00FF0000, 0x40000000};
    const UniqueIcon icon = MakeTestIcon(2, 2, colours, {});
    const UniqueIcon copied = MakeIconCopy(icon.get(), IconCopy::Darker);
    ASSERT_TRUE(copied);
    EXPECT_EQ(PixelsOf(copied.get()).colours,
              (std::vector<std::uint32_t>{0xFFBFBFBF, 0x80964B25, 0x00BF0000, 0x40000000}));
}

TEST(IconCopyTest, CopiesTheProgramsIcon)
{
    const UniqueIcon icon(static_cast<HICON>(
        ::LoadImageW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDI_BROWSE), IMAGE_ICON, 16, 16, LR_DEFAULTCOLOR)));
    ASSERT_TRUE(icon);
    const UniqueIcon copied = MakeIconCopy(icon.get(), IconCopy::Grey);
    const IconPixels before = PixelsOf(icon.get());
    const IconPixels after = PixelsOf(copied.get());
    ASSERT_EQ(after.colours.size(), 16U * 16U);
    for (std::size_t i = 0; i < before.colours.size(); ++i) {
        EXPECT_EQ(after.colours[i], CopiedPixel(before.colours[i], IconCopy::Grey)) << "pixel " << i;
    }
    EXPECT_EQ(after.isClear, before.isClear);
}

TEST(IconCopyTest, HasTheMeasuredSize)
{
    const UniqueIcon icon = MakeTestIcon(5, 3, 0x00FFFFFF);
    const UniqueIcon copied = MakeIconCopy(icon.get(), IconCopy::Darker);
    ASSERT_TRUE(copied);
    EXPECT_EQ(PixelsOf(copied.get()).colours, std::vector<std::uint32_t>(std::size_t{4} * 2, 0x00BFBFBF));
}

TEST(IconCopyTest, IsNotMadeWithoutAnIconOrWithoutColours)
{
    EXPECT_FALSE(MakeIconCopy(nullptr, IconCopy::Darker));
    // An icon without colours is a mask of twice its height.
    const UniqueBitmap mask(::CreateBitmap(16, 32, 1, 1, nullptr));
    ICONINFO description{};
    description.fIcon = TRUE;
    description.hbmMask = mask.get();
    const UniqueIcon colourless(::CreateIconIndirect(&description));
    ASSERT_TRUE(colourless);
    EXPECT_FALSE(MakeIconCopy(colourless.get(), IconCopy::Darker));
}

TEST(IconOfBitmapTest, LetsTheBackgroundThroughWhereTheTransparentColourIs)
{
    MemoryBitmap source(18, 3, RGB(255, 0, 255));
    ::SetPixelV(source.Dc(), 17, 1, RGB(1, 128, 2));
    const UniqueBitmap bitmap(::CreateCompatibleBitmap(source.Dc(), 18, 3));
    {
        const UniqueMemoryDc dc(::CreateCompatibleDC(nullptr));
        const SelectScope selected(dc.get(), bitmap.get());
        ::BitBlt(dc.get(), 0, 0, 18, 3, source.Dc(), 0, 0, SRCCOPY);
    }
    MemoryBitmap target(18, 3, RGB(250, 250, 0));
    const UniqueIcon icon = MakeIconOfBitmap(bitmap.get(), RGB(255, 0, 255));
    ::DrawIconEx(target.Dc(), 0, 0, icon.get(), 0, 0, 0, nullptr, DI_NORMAL);
    EXPECT_EQ(target.Pixel(17, 1), RGB(1, 128, 2));
    EXPECT_EQ(target.Pixel(16, 1), RGB(250, 250, 0));
    EXPECT_EQ(target.Pixel(0, 0), RGB(250, 250, 0));

    const UniqueIcon opaque = MakeIconOfBitmap(bitmap.get(), std::nullopt);
    ::DrawIconEx(target.Dc(), 0, 0, opaque.get(), 0, 0, 0, nullptr, DI_NORMAL);
    EXPECT_EQ(target.Pixel(0, 0), RGB(255, 0, 255));
}

TEST(IconOfBitmapTest, IsEmptyForWhatIsNoBitmap)
{
    EXPECT_FALSE(MakeIconOfBitmap(nullptr, std::nullopt));
}

TEST(ButtonIconsTest, LeaveNothingBehind)
{
    const UniqueIcon icon = MakeTestIcon(16, 16, 0x00C86432);
    const UniqueBitmap bitmap(::CreateBitmap(16, 16, 1, 32, nullptr));
    const auto use = [&] {
        static_cast<void>(MeasureIcon(icon.get()));
        static_cast<void>(MakeIconCopy(icon.get(), IconCopy::Darker));
        static_cast<void>(MakeIconOfBitmap(bitmap.get(), RGB(0, 0, 0)));
    };
    use(); // what the system keeps from the first time on
    const unsigned before = CountGdiObjects();
    for (int i = 0; i < 50; ++i) {
        use();
    }
    EXPECT_EQ(CountGdiObjects(), before);
}

} // namespace
} // namespace sitekeeper
