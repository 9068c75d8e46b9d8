// Stores made at random: against the naive store, operation by operation, and through a save and back.
#include "support/StorePair.h"

#include <gtest/gtest.h>
#include <random>

namespace sitekeeper {
namespace {

constexpr const wchar_t* StorePath = L"random.ini";

TEST(RandomStoreTest, DoesWhatTheNaiveStoreDoes)
{
    constexpr unsigned Sequences = 20'000;
    constexpr int Steps = 12;
    for (unsigned seed = 1; seed <= Sequences; ++seed) {
        std::mt19937 random(seed);
        StorePair pair([&random](std::size_t count) -> std::size_t { return random() % count; });
        for (int step = 0; step < Steps; ++step) {
            ASSERT_EQ(pair.Step(), "") << "in step " << step << " of sequence " << seed;
        }
        ASSERT_EQ(pair.Finish(), "") << "of sequence " << seed;
    }
}

/// A text for a store that is to come back as it was: what a file cannot tell apart is left out. These are line feeds
/// anywhere; " = " within a key, and " =" at its end, which the separator would make the first one; and values that
/// were emptied, since lines without a value are not read. Characters that the ends lose are no loss: a store does not
/// hold them there.
class ReadableTexts
{
public:
    explicit ReadableTexts(unsigned seed) : m_random(seed) {}

    [[nodiscard]] std::size_t Below(std::size_t count) { return m_random() % count; }

    [[nodiscard]] std::wstring Text()
    {
        constexpr std::wstring_view Characters(L"abAB =[]\te\r;.\u00E9\u0416\U0001F600\0", 17);
        std::wstring text;
        for (std::size_t left = Below(5); left > 0; --left) {
            text += Characters[Below(Characters.size())];
        }
        return text;
    }
    [[nodiscard]] std::wstring Key()
    {
        const std::wstring key = Text();
        // Also where the end shows only when brackets and tabs behind it are taken off.
        const std::size_t last = key.find_last_not_of(L"[]\t");
        const std::wstring end = key.substr(0, last == std::wstring::npos ? 0 : last + 1);
        return end.find(L" = ") == std::wstring::npos && !end.ends_with(L" =") ? key : L"k";
    }
    [[nodiscard]] std::wstring Value()
    {
        const std::wstring value = Text();
        return value.empty() ? L"v" : value;
    }

private:
    std::minstd_rand m_random;
};

TEST(RandomStoreTest, ComesBackAsTheSameBytesFromEveryFile)
{
    constexpr unsigned Stores = 100'000;
    constexpr std::size_t MostEntries = 6;
    PlainFiles files;
    const Utf8CodePage codePage;
    std::size_t bytes = 0;
    ReadableTexts texts(1);
    for (unsigned number = 0; number < Stores; ++number) {
        CIniFile made(files, codePage, L"random"); // the file's name comes from it
        for (std::size_t left = texts.Below(MostEntries + 1); left > 0; --left) {
            if (texts.Below(2) == 0) {
                made.SetSection(texts.Text());
            }
            made.SetValue(texts.Key(), texts.Value());
        }
        ASSERT_EQ(made.Save(true), CIniFile::Success);
        const std::string saved = files.ReadContent(StorePath).value_or("(no file)");
        CIniFile loaded(files, codePage, L"random");
        ASSERT_EQ(loaded.LoadFile(), CIniFile::Success);
        files.Put(StorePath, "");
        ASSERT_EQ(loaded.Save(true), CIniFile::Success);
        ASSERT_EQ(files.ReadContent(StorePath), saved) << "store " << number;
        bytes += saved.size();
    }
    EXPECT_GT(bytes / Stores, 20U); // they do hold something
}

} // namespace
} // namespace sitekeeper
