#include "text/Tokens.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace sitekeeper {
namespace {

/// A token and the position behind it.
struct Step
{
    std::wstring token;
    std::ptrdiff_t position = 0;

    bool operator==(const Step&) const = default;
};

void PrintTo(const Step& step, std::ostream* out)
{
    *out << ::testing::PrintToString(step.token) << " then " << step.position;
}

/// All steps from `position` on, the last of them the one that finds no token.
std::vector<Step> StepsThrough(const std::wstring& text, std::ptrdiff_t position = 0)
{
    std::vector<Step> steps;
    while (const auto token = NextToken(text, L';', position)) {
        steps.push_back({std::wstring(*token), position});
    }
    return steps;
}

TEST(NextToken, GivesTheTextsBetweenTheSeparators)
{
    EXPECT_EQ(StepsThrough(L"C:\\A;C:\\B"), (std::vector<Step>{{L"C:\\A", 5}, {L"C:\\B", 10}, {L"", -1}}));
    EXPECT_EQ(StepsThrough(L"a"), (std::vector<Step>{{L"a", 2}, {L"", -1}}));
    EXPECT_EQ(StepsThrough(L"a b,c"), (std::vector<Step>{{L"a b,c", 6}, {L"", -1}})) << "only one character separates";
}

TEST(NextToken, StandsAtTheSamePlaceWithAndWithoutALastSeparator)
{
    EXPECT_EQ(StepsThrough(L"ab;cd;"), StepsThrough(L"ab;cd"));
}

TEST(NextToken, SkipsSeparatorsBeforeAToken)
{
    EXPECT_EQ(StepsThrough(L";;a;;;b;;"), (std::vector<Step>{{L"a", 4}, {L"b", 8}, {L"", -1}}));
}

TEST(NextToken, EndsWithAnEmptyTextAndMinusOne)
{
    for (const std::wstring text : {L"", L";", L";;;"}) {
        EXPECT_EQ(StepsThrough(text), (std::vector<Step>{{L"", -1}})) << text;
    }
}

TEST(NextToken, BeginsAnywhere)
{
    EXPECT_EQ(StepsThrough(L"abc;def", 1), (std::vector<Step>{{L"bc", 4}, {L"def", 8}, {L"", -1}}));
    EXPECT_EQ(StepsThrough(L"abc;def", 3), (std::vector<Step>{{L"def", 8}, {L"", -1}}));
    for (const std::ptrdiff_t behind : {7, 8, 1000}) {
        EXPECT_EQ(StepsThrough(L"abc;def", behind), (std::vector<Step>{{L"", -1}})) << behind;
    }
}

TEST(NextToken, RefusesANegativePosition)
{
    for (const std::ptrdiff_t negative : {-1, -2, -1000}) {
        for (const std::wstring text : {L"", L"a;b"}) {
            std::ptrdiff_t position = negative;
            EXPECT_EQ(NextToken(text, L';', position), std::nullopt);
            EXPECT_EQ(position, negative);
        }
    }
}

} // namespace
} // namespace sitekeeper
