// The search for what goes on a page, beside the same search taken literally and beside trying every number.
#include "maindlg/PageBreak.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <optional>
#include <random>
#include <vector>

namespace sitekeeper {
namespace {

/// Heights by the number of characters, from 0.
using Heights = std::vector<int>;

std::size_t Fit(const Heights& heights, int page)
{
    return FitOnPage(heights.size() - 1, page, [&heights](std::size_t count) { return heights.at(count); });
}

/// The search step by step; nothing when it would not end.
std::optional<std::size_t> Literally(const Heights& heights, int page)
{
    constexpr int MostSteps = 1000;
    std::size_t lo = 0;
    std::size_t hi = heights.size() - 1;
    std::size_t candidate = hi;
    for (int step = 0; step < MostSteps; ++step) {
        const int h = heights[candidate];
        std::size_t fit = lo;
        if (h < page) {
            fit = candidate;
        } else if (h > page) {
            hi = candidate;
        }
        if (fit == hi - 1) {
            lo = hi;
        } else {
            lo = fit;
        }
        if (!(lo < hi)) {
            return candidate;
        }
        candidate = lo + (hi - lo) / 2;
    }
    return std::nullopt;
}

/// The most characters that are lower than the page, tried one by one.
std::size_t MostBelow(const Heights& heights, int page)
{
    std::size_t most = 0;
    while (most + 1 < heights.size() && heights[most + 1] < page) {
        ++most;
    }
    return most;
}

/// So many characters in lines of `width`, each line `height` high.
Heights Lines(std::size_t characters, std::size_t width, int height)
{
    Heights heights;
    for (std::size_t count = 0; count <= characters; ++count) {
        heights.push_back(static_cast<int>((count + width - 1) / width) * height);
    }
    return heights;
}

TEST(PageBreak, TakesAllThatIsLowerThanThePage)
{
    for (const std::size_t characters : {1U, 2U, 3U, 100U, 101U}) {
        EXPECT_EQ(Fit(Lines(characters, 10, 5), 1000), characters);
    }
}

TEST(PageBreak, TakesWhatIsTriedLast)
{
    // Ten lines of ten, four of them lower than the page: 40 characters, or one more where that was tried last.
    for (std::size_t characters = 41; characters <= 200; ++characters) {
        const std::size_t fit = Fit(Lines(characters, 10, 5), 22);
        EXPECT_TRUE(fit == 40 || fit == 41) << characters << ": " << fit;
    }
}

TEST(PageBreak, EndsWhereAHeightEqualsThePages)
{
    for (std::size_t characters = 1; characters <= 200; ++characters) {
        const Heights heights = Lines(characters, 10, 5);
        const std::size_t fit = Fit(heights, 20); // exactly four lines
        EXPECT_GT(fit, 0U);
        EXPECT_LE(heights[fit], characters > 40 && fit == 41 ? 25 : 20) << characters;
    }
}

TEST(PageBreak, TakesNothingWhereNotEvenOneCharacterFits)
{
    for (std::size_t characters = 1; characters <= 50; ++characters) {
        EXPECT_EQ(Fit(Lines(characters, 10, 5), 4), 0U);
        EXPECT_EQ(Fit(Lines(characters, 10, 5), 0), 0U);
        EXPECT_EQ(Fit(Lines(characters, 10, 5), -1), 0U);
    }
}

TEST(PageBreak, AnswersAsTheSearchTakenLiterally)
{
    std::mt19937 random(20240506);
    int endless = 0;
    for (int round = 0; round < 20'000; ++round) {
        Heights heights(1, 0);
        const std::size_t characters = 1 + random() % 40;
        while (heights.size() <= characters) {
            heights.push_back(heights.back() + static_cast<int>(random() % 3));
        }
        const int page = static_cast<int>(random() % 45);
        const std::size_t fit = Fit(heights, page);
        const std::optional<std::size_t> literal = Literally(heights, page);
        if (literal && !(*literal == 1 && heights[1] > page)) {
            ASSERT_EQ(fit, *literal) << round;
        } else if (literal) {
            ASSERT_EQ(fit, 0U) << round;
        } else {
            ++endless;
            ASSERT_EQ(heights[fit], page) << round;
        }
        ASSERT_GE(fit, MostBelow(heights, page)) << round;
        ASSERT_LE(heights[fit == 0 ? 0 : fit - 1], std::max(page, 0)) << round;
    }
    EXPECT_GT(endless, 0); // the case is real
}

TEST(PageBreak, AgreesWithTryingEveryNumberForEveryShortText)
{
    constexpr int Steps = 3; // by how much a character may add to the height
    constexpr int Highest = 14;
    for (int characters = 1; characters <= 6; ++characters) {
        const int texts = static_cast<int>(std::pow(Steps, characters));
        for (int text = 0; text < texts; ++text) {
            Heights heights(1, 0);
            for (int left = text; heights.size() <= static_cast<std::size_t>(characters); left /= Steps) {
                heights.push_back(heights.back() + left % Steps);
            }
            for (int page = -1; page <= Highest; ++page) {
                const std::size_t fit = Fit(heights, page);
                const std::size_t most = MostBelow(heights, page);
                if (heights[1] > page) {
                    ASSERT_EQ(fit, 0U);
                } else if (std::find(heights.begin() + 1, heights.end(), page) != heights.end()) {
                    ASSERT_TRUE(heights[fit] == page || fit == most || fit == most + 1);
                } else {
                    ASSERT_TRUE(fit == most || (fit == most + 1 && fit < heights.size())) << fit;
                }
            }
        }
    }
}

TEST(PageBreak, EndsForHeightsThatFollowNoRule)
{
    std::mt19937 random(7);
    for (int round = 0; round < 20'000; ++round) {
        Heights heights(2 + random() % 60);
        std::generate(heights.begin(), heights.end(), [&random] { return static_cast<int>(random() % 5); });
        EXPECT_LT(Fit(heights, 2), heights.size());
    }
}

TEST(PageBreak, MeasuresAsOftenAsATextCanBeHalved)
{
    int measured = 0;
    constexpr std::size_t Characters = 1'000'000;
    const std::size_t fit = FitOnPage(Characters, 700, [&measured](std::size_t count) {
        ++measured;
        return static_cast<int>(count / 80);
    });
    EXPECT_GE(fit, 55'999U);
    EXPECT_LT(fit, 56'080U); // those are as high as the page
    EXPECT_LE(measured, 22);
}

} // namespace
} // namespace sitekeeper
