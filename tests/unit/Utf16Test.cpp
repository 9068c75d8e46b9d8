#include "text/Utf16.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

std::vector<std::byte> Bytes(std::initializer_list<int> values)
{
    std::vector<std::byte> bytes;
    for (const int value : values) {
        bytes.push_back(static_cast<std::byte>(value));
    }
    return bytes;
}

TEST(EncodeUtf16, GivesTwoBytesForEachUnitLowByteFirst)
{
    EXPECT_EQ(EncodeUtf16(L""), Bytes({}));
    EXPECT_EQ(EncodeUtf16(L"A\u0416"), Bytes({0x41, 0x00, 0x16, 0x04}));
    EXPECT_EQ(EncodeUtf16(L"\U0001F600"), Bytes({0x3D, 0xD8, 0x00, 0xDE}));
    EXPECT_EQ(EncodeUtf16(L"\U0010FFFF"), Bytes({0xFF, 0xDB, 0xFF, 0xDF}));
}

TEST(EncodeUtf16, AddsNoTerminatorAndKeepsZeros)
{
    EXPECT_EQ(EncodeUtf16(std::wstring_view(L"A\0B", 3)), Bytes({0x41, 0, 0, 0, 0x42, 0}));
}

TEST(EncodeUtf16, KeepsLoneHalves)
{
    const std::wstring lone{static_cast<wchar_t>(0xD83D), L'x', static_cast<wchar_t>(0xDE00)};
    EXPECT_EQ(EncodeUtf16(lone), Bytes({0x3D, 0xD8, 0x78, 0x00, 0x00, 0xDE}));
    EXPECT_EQ(DecodeUtf16(EncodeUtf16(lone)), lone);
}

TEST(DecodeUtf16, EndsAtTheFirstZero)
{
    EXPECT_EQ(DecodeUtf16(Bytes({0x41, 0, 0, 0, 0x42, 0})), L"A");
    EXPECT_EQ(DecodeUtf16(Bytes({0, 0})), L"");
    EXPECT_EQ(DecodeUtf16(Bytes({})), L"");
}

TEST(DecodeUtf16, EndsAtTheLastWholeUnit)
{
    EXPECT_EQ(DecodeUtf16(Bytes({0x41, 0, 0x42})), L"A");
    EXPECT_EQ(DecodeUtf16(Bytes({0x41})), L"");
    EXPECT_EQ(DecodeUtf16(Bytes({0x3D, 0xD8, 0x00})), (std::wstring{static_cast<wchar_t>(0xD83D)}));
}

TEST(DecodeUtf16, KeepsHalvesInTheWrongOrder)
{
    const std::wstring text = DecodeUtf16(Bytes({0x00, 0xDE, 0x3D, 0xD8}));
    EXPECT_EQ(text, (std::wstring{static_cast<wchar_t>(0xDE00), static_cast<wchar_t>(0xD83D)}));
}

TEST(DecodeUtf16, ReadsBackWhatWasEncoded)
{
    for (const std::wstring text : {L"C:\\Suite", L"M\u00FCller", L"\u4E2D\u6587", L"a\U0001F600b\U00010000"}) {
        EXPECT_EQ(DecodeUtf16(EncodeUtf16(text)), text);
    }
}

} // namespace
} // namespace sitekeeper
