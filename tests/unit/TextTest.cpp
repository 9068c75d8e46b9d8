#include "text/Text.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

TEST(FoldCase, TurnsCapitalsIntoSmallLetters)
{
    const struct
    {
        wchar_t capital;
        wchar_t small;
    } rows[] = {
        {L'A', L'a'},           {L'Z', L'z'},           {L'\u00C0', L'\u00E0'}, {L'\u00D6', L'\u00F6'},
        {L'\u00D8', L'\u00F8'}, {L'\u00DE', L'\u00FE'}, {L'\u0100', L'\u0101'}, {L'\u012E', L'\u012F'},
        {L'\u0132', L'\u0133'}, {L'\u0139', L'\u013A'}, {L'\u0147', L'\u0148'}, {L'\u014A', L'\u014B'},
        {L'\u0160', L'\u0161'}, {L'\u0176', L'\u0177'}, {L'\u0178', L'\u00FF'}, {L'\u0179', L'\u017A'},
        {L'\u017D', L'\u017E'}, {L'\u0386', L'\u03AC'}, {L'\u0388', L'\u03AD'}, {L'\u038A', L'\u03AF'},
        {L'\u038C', L'\u03CC'}, {L'\u038E', L'\u03CD'}, {L'\u038F', L'\u03CE'}, {L'\u0391', L'\u03B1'},
        {L'\u03A1', L'\u03C1'}, {L'\u03A3', L'\u03C3'}, {L'\u03AB', L'\u03CB'}, {L'\u0400', L'\u0450'},
        {L'\u040F', L'\u045F'}, {L'\u0410', L'\u0430'}, {L'\u042F', L'\u044F'}, {L'\u0460', L'\u0461'},
        {L'\u048A', L'\u048B'}, {L'\u04C1', L'\u04C2'}, {L'\u04D0', L'\u04D1'}, {L'\u1E00', L'\u1E01'},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(FoldCase(row.capital), row.small) << static_cast<unsigned>(row.capital);
        EXPECT_EQ(FoldCase(row.small), row.small) << static_cast<unsigned>(row.small);
    }
}

TEST(FoldCase, LeavesEverythingElseAlone)
{
    const wchar_t others[] = {L'\0',     L'@',      L'[',      L'`',      L'{',      L'0',
                              L'_',      L'\u00D7', L'\u00F7', L'\u00DF', L'\u0130', L'\u0131',
                              L'\u0138', L'\u0149', L'\u03A2', L'\u4E2D', L'\uFFFF'};
    for (const wchar_t other : others) {
        EXPECT_EQ(FoldCase(other), other) << static_cast<unsigned>(other);
    }
}

TEST(FoldCase, IsDoneAfterOneStep)
{
    for (unsigned code = 0; code <= 0xFFFF; ++code) {
        const wchar_t folded = FoldCase(static_cast<wchar_t>(code));
        ASSERT_EQ(FoldCase(folded), folded) << code;
    }
}

TEST(ToLowerCase, FoldsEachCharacter)
{
    EXPECT_EQ(ToLowerCase(L"M\u00DCLLER 7"), L"m\u00FCller 7");
    EXPECT_EQ(ToLowerCase(L""), L"");
}

TEST(EqualIgnoringCase, ComparesWholeTexts)
{
    const struct
    {
        const wchar_t* left;
        const wchar_t* right;
        bool areEqual;
    } rows[] = {
        {L"Administrator", L"ADMINISTRATOR", true},
        {L"administrator", L"Administrator", true},
        {L"Administrator", L"Administrators", false},
        {L"Administrator", L"Administrato", false},
        {L"", L"", true},
        {L"", L"a", false},
        {L"\u0416\u0443\u043A", L"\u0436\u0423\u041A", true},
        {L"stra\u00DFe", L"strasse", false},
        {L"a b", L"a  b", false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(EqualIgnoringCase(row.left, row.right), row.areEqual) << row.left << " / " << row.right;
        EXPECT_EQ(EqualIgnoringCase(row.right, row.left), row.areEqual) << row.right << " / " << row.left;
    }
}

TEST(LeadingNumber, ReadsTheNumberAtTheStart)
{
    const struct
    {
        const wchar_t* text;
        int number;
    } rows[] = {
        {L"2024-05-06", 2024},
        {L"007", 7},
        {L"", 0},
        {L"x1", 0},
        {L"-", 0},
        {L"+", 0},
        {L"- 5", 0},
        {L"-+5", 0},
        {L"-5", -5},
        {L"+5", 5},
        {L"  \t\r\n\v\f12", 12},
        {L"12 34", 12},
        {L"0x10", 0},
        {L"1,5", 1},
        {L"\u0665", 0}, // a digit, but not one of the ten
        {L"2147483647", 2147483647},
        {L"2147483648", 2147483647},
        {L"99999999999999999999999999999999999999999", 2147483647},
        {L"-2147483648", -2147483647 - 1},
        {L"-2147483649", -2147483647 - 1},
        {L"-99999999999999999999999999999999999999999", -2147483647 - 1},
        {L"000000000000000000000000000000000000000012", 12},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(LeadingNumber(row.text), row.number) << '"' << row.text << '"';
    }
}

TEST(Fill, PutsArgumentsIntoTheirPlaces)
{
    EXPECT_EQ(Fill(L"NormKeeper%s.exe", {L"64"}), L"NormKeeper64.exe");
    EXPECT_EQ(Fill(L"%d,%d,%d,%d", {L"1", L"-2", L"3", L"4"}), L"1,-2,3,4");
    EXPECT_EQ(Fill(L"%s%s", {L"a", L"b"}), L"ab");
    EXPECT_EQ(Fill(L"no place", {L"a"}), L"no place");
    EXPECT_EQ(Fill(L"", {L"a"}), L"");
}

TEST(Fill, LeavesAPlaceEmptyWhenArgumentsRunOut)
{
    EXPECT_EQ(Fill(L"%s and %s", {L"a"}), L"a and ");
    EXPECT_EQ(Fill(L"[%d]", {}), L"[]");
}

TEST(Fill, TakesOtherPercentSignsAsTheyStand)
{
    EXPECT_EQ(Fill(L"100%% of %s", {L"a"}), L"100% of a");
    EXPECT_EQ(Fill(L"100%", {L"a"}), L"100%");
    EXPECT_EQ(Fill(L"%x%s", {L"a"}), L"%xa");
    EXPECT_EQ(Fill(L"%%s", {L"a"}), L"%s");
    EXPECT_EQ(Fill(L"%%%s", {L"a"}), L"%a");
}

TEST(Fill, DoesNotFillInsideAnArgument)
{
    EXPECT_EQ(Fill(L"%s %s", {L"%s", L"%%"}), L"%s %%");
}

TEST(ReplaceAll, ReplacesFromLeftToRight)
{
    const struct
    {
        const wchar_t* text;
        const wchar_t* from;
        const wchar_t* to;
        const wchar_t* replaced;
    } rows[] = {
        {L"1, 2, 0", L",", L".", L"1. 2. 0"}, {L"1. 2. 0", L" ", L"", L"1.2.0"}, {L"aaa", L"aa", L"b", L"ba"},
        {L"aaaa", L"aa", L"a", L"aa"},        {L"abc", L"", L"x", L"abc"},       {L"", L"a", L"x", L""},
        {L"abc", L"abcd", L"x", L"abc"},      {L"abc", L"abc", L"", L""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(ReplaceAll(row.text, row.from, row.to), row.replaced) << row.text;
    }
}

} // namespace
} // namespace sitekeeper
