// What a store reads, finds and changes. What it writes is in IniFileSaveTest.cpp.
#include "access/IniFile.h"

#include "platform/PlatformError.h"
#include "support/IniFileTestAccess.h"
#include "support/PlainFiles.h"
#include "support/Utf8CodePage.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

using namespace std::string_literals;
using Texts = std::vector<std::wstring>;

class IniFileTest : public ::testing::Test
{
protected:
    void Load(const std::string& content)
    {
        TextReader reader(content, codePage);
        ASSERT_EQ(store.Load(reader), CIniFile::Success);
    }
    void Parse(const std::string& content)
    {
        TextReader reader(content, codePage);
        ASSERT_EQ(store.Parse(reader), CIniFile::Success);
    }
    /// The entries of a section, each as "key|value".
    [[nodiscard]] Texts EntriesOf(const std::wstring& section)
    {
        store.SetSection(section);
        return Entries();
    }
    [[nodiscard]] Texts Entries() const
    {
        Texts keys{L"from before"};
        Texts values{L"from before", L"too"};
        store.GetSectionEntries(keys, values);
        EXPECT_EQ(keys.size(), values.size());
        for (std::size_t place = 0; place < std::min(keys.size(), values.size()); ++place) {
            keys[place] += L"|" + values[place];
        }
        return keys;
    }
    [[nodiscard]] std::wstring Value(std::wstring_view key, std::wstring_view defaultValue = L"none") const
    {
        std::wstring value = L"from before";
        store.GetValue(key, value, defaultValue);
        return value;
    }
    /// Whether there is something to save.
    [[nodiscard]] bool IsDirty()
    {
        const std::size_t before = files.Moves();
        EXPECT_EQ(store.Save(false), CIniFile::Success);
        return files.Moves() != before;
    }
    [[nodiscard]] ResultCode ResultOfSwap(std::size_t a, std::size_t b)
    {
        try {
            store.SwapEntries(a, b);
        } catch (const PlatformError& error) {
            return error.Code();
        }
        return ResultCode::Ok;
    }

    PlainFiles files;
    Utf8CodePage codePage;
    CIniFile store{files, codePage, L"C:\\Suite\\Box.exe"};
};

TEST_F(IniFileTest, ReadsLinesByTheRules)
{
    struct Case
    {
        std::string content;
        Texts entries; // of section "s"
    };
    const Case cases[] = {
        {"[s]\nbob = bob\nalice = alice\n", {L"bob|bob", L"alice|alice"}},
        {"[s]\r\na = 1\r\n\r\n\r\nb = 2\r\n", {L"a|1", L"b|2"}},
        // The first separator parts key and value.
        {"[s]\na = b = c\n", {L"a|b = c"}},
        {"[s]\na =  = \n", {L"a| = "}},
        {"[s]\na = = b\n", {L"a|= b"}},
        {"[s]\n = b\n", {L"|b"}},
        // No separator, no entry.
        {"[s]\nkey=value\na =b\na= b\na\t=\tb\n; comment\n#\n=\n", {}},
        // Nothing is no value.
        {"[s]\nname =\n", {}},
        {"[s]\nname = \n", {}},
        {"[s]\nname =", {}},
        {"[s]\n = \n", {}},
        // Values are never trimmed.
        {"[s]\na =  \t b \t \n", {L"a| \t b \t "}},
        {"[s]\na =  \n", {L"a| "}},
        {"[s]\na = [b]\n", {L"a|[b]"}},
        // Keys lose brackets and tabs, but not blanks.
        {"[s]\n a  = 1\n", {L" a |1"}},
        {"[s]\n\t][a]b[\t] = 1\n", {L"a]b|1"}},
        {"[s]\n\t a\t  = 1\n", {L" a\t |1"}},
        {"[s]\n[\t] = 1\n", {L"|1"}},
        // A duplicate takes the place and the later value.
        {"[s]\na = 1\nb = 2\na = 3\n", {L"a|3", L"b|2"}},
        {"[s]\na = 1\n[t]\na = 2\n[s]\na = 3\n", {L"a|3"}},
        {"[s]\na = 1\n[a] = 2\n", {L"a|2"}},
        {"[s]\na = 1\nA = 2\n", {L"a|1", L"A|2"}},
        // An existing value can be emptied.
        {"[s]\na = 1\na = \n", {L"a|"}},
        // Line ends of both kinds, none at the end, and a lone "\r" that is no line end.
        {"[s]\na = 1\r\nb = 2\nc = 3", {L"a|1", L"b|2", L"c|3"}},
        {"[s]\na = 1\rb = 2\n", {L"a|1\rb = 2"}},
        {"[s]\na = 1\r\r\n", {L"a|1\r"}},
        {"[s]\na = 1\r", {L"a|1\r"}},
        {"[s]\r\n\r\r\na = 1\n", {L"a|1"}},
        // A zero is a character like others.
        {"[s]\na\0b = c\0d\n"s, {L"a\0b|c\0d"s}},
        {"[s]\n\0 = \0\n"s, {L"\0|\0"s}},
        // Bytes that are no characters.
        {"[s]\na\xFF = \xC3\xA9\xC3\n", {L"a\uFFFD|\u00E9\uFFFD"}},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(::testing::PrintToString(each.content));
        Load(each.content);
        EXPECT_EQ(EntriesOf(L"s"), each.entries);
    }
}

TEST_F(IniFileTest, ReadsHeadersByTheRules)
{
    struct Case
    {
        std::string header;
        std::wstring section;
    };
    const Case cases[] = {
        {"[Tools]", L"Tools"},
        {"[ Tools ]", L"Tools"},
        {"[ \t[Norm Keeper]\t ]", L"Norm Keeper"},
        {"[a]b[c]", L"a]b[c"},
        {"[a = b]", L"a = b"},
        {"[]", L""},
        {"[ ]", L""},
        {"[[]]", L""},
        {"[\r]", L"\r"},
        {"[\xC3\x96]", L"\u00D6"},
        // No headers: the section is still the one before.
        {"[x", L"before"},
        {"x]", L"before"},
        {"[", L"before"},
        {"]", L"before"},
        {" [x]", L"before"},
        {"[x] ", L"before"},
        {"", L"before"},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.header);
        Load("[before]\n" + each.header + "\nk = v\n");
        EXPECT_EQ(EntriesOf(each.section), Texts{L"k|v"});
    }
}

TEST_F(IniFileTest, BeginsInTheCurrentSection)
{
    Load("k = v\n");
    EXPECT_EQ(EntriesOf(L""), Texts{L"k|v"});
    store.SetSection(L"kept");
    Load("k = w\n[last]\nx = y\n");
    EXPECT_EQ(Entries(), Texts{L"x|y"}); // the last header's
    EXPECT_EQ(EntriesOf(L""), Texts{});
    EXPECT_EQ(EntriesOf(L"kept"), Texts{L"k|w"});
}

TEST_F(IniFileTest, TakesTheValueThreeCharactersBehindAnySeparator)
{
    IniFileTestAccess::SetSeparator(store, L"=");
    Load("[s]\na=123\nb=12\nc=1\nd=\n");
    EXPECT_EQ(EntriesOf(L"s"), Texts{L"a|3"});
    IniFileTestAccess::SetSeparator(store, L" => ");
    Load("[s]\na => 1\n");
    EXPECT_EQ(EntriesOf(L"s"), Texts{L"a| 1"});
}

TEST_F(IniFileTest, ReadsALineOfAMegabyte)
{
    const std::size_t size = 1'000'000;
    Load("[s]\na = " + std::string(size, 'x') + "\n" + std::string(size, 'y') + "\n" + std::string(size, 'k') +
         " = 1\nb = 2\n" + std::string(size, '['));
    EXPECT_EQ(EntriesOf(L"s"), (Texts{L"a|" + std::wstring(size, L'x'), std::wstring(size, L'k') + L"|1", L"b|2"}));
}

TEST_F(IniFileTest, AddsToWhatIsThereWhenParsingAndReplacesItWhenLoading)
{
    store.SetSection(L"s");
    store.SetValue(L"a", L"1");
    Parse("b = 2\na = 3\n");
    EXPECT_EQ(EntriesOf(L"s"), (Texts{L"a|3", L"b|2"}));
    Load("c = 4\n");
    EXPECT_EQ(EntriesOf(L"s"), Texts{L"c|4"});
    Load("");
    EXPECT_EQ(EntriesOf(L"s"), Texts{});
}

TEST_F(IniFileTest, IsAsDirtyAfterParsingAsBeforeAndCleanAfterLoading)
{
    EXPECT_FALSE(IsDirty());
    Parse("a = 1\n");
    EXPECT_FALSE(IsDirty());
    store.SetValue(L"b", L"2");
    Parse("c = 3\n");
    EXPECT_TRUE(IsDirty());
    store.SetValue(L"d", L"4");
    Load("c = 3\n");
    EXPECT_FALSE(IsDirty());
}

TEST_F(IniFileTest, IsDirtyAfterWhatChangedSomethingOnly)
{
    struct Case
    {
        const char* name;
        std::function<void(CIniFile&)> operation;
        bool isDirty;
    };
    const Case cases[] = {
        {"new", [](CIniFile& file) { file.SetValue(L"b", L"2"); }, true},
        {"changed", [](CIniFile& file) { file.SetValue(L"a", L"2"); }, true},
        {"emptied", [](CIniFile& file) { file.SetValue(L"a", L""); }, true},
        {"the same", [](CIniFile& file) { file.SetValue(L"[a]", L"1"); }, false},
        {"new but empty", [](CIniFile& file) { file.SetValue(L"b", L""); }, false},
        {"number, the same", [](CIniFile& file) { file.SetBoolValue(L"a", 1); }, false},
        {"no values", [](CIniFile& file) { file.SetValues({L"b"}, {}); }, false},
        {"cleared", [](CIniFile& file) { file.Clear(); }, true},
        {"deleted", [](CIniFile& file) { file.DeleteSection(L"s"); }, true},
        {"deleted another", [](CIniFile& file) { file.DeleteSection(L"S"); }, false},
        {"deleted untrimmed", [](CIniFile& file) { file.DeleteSection(L"[s]"); }, false},
        {"sorted", [](CIniFile& file) { file.Sort(); }, false},
        {"swapped", [](CIniFile& file) { file.SwapEntries(0, 1); }, false},
        {"section chosen", [](CIniFile& file) { file.SetSection(L"new"); }, false},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        Load("[s]\nz = 1\na = 1\n");
        store.SetSection(L"s");
        each.operation(store);
        EXPECT_EQ(IsDirty(), each.isDirty);
        EXPECT_FALSE(IsDirty());
    }
}

TEST_F(IniFileTest, StaysCleanWhenAnEmptyStoreIsCleared)
{
    store.Clear();
    EXPECT_FALSE(IsDirty());
}

TEST_F(IniFileTest, LooksKeysUpStrippedOfAllButBlanks)
{
    Load("[s]\na = 1\n b = 2\n = 3\n");
    EXPECT_EQ(Value(L"a"), L"1");
    EXPECT_EQ(Value(L"[\ta\n]"), L"1");
    EXPECT_EQ(Value(L" a"), L"none");
    EXPECT_EQ(Value(L" b"), L"2");
    EXPECT_EQ(Value(L"b"), L"none");
    EXPECT_EQ(Value(L"A"), L"none");
    EXPECT_EQ(Value(L"[]"), L"3");
    EXPECT_EQ(Value(L"x", L""), L"");
    store.SetSection(L"S");
    EXPECT_EQ(Value(L"a"), L"none");
}

TEST_F(IniFileTest, SelectsSectionsStrippedOfBlanksToo)
{
    Load("[s t]\na = 1\n");
    for (const wchar_t* const name : {L"s t", L" s t ", L"[s t]", L"\n\t [[s t\n] \t"}) {
        store.SetSection(L"other");
        EXPECT_EQ(EntriesOf(name), Texts{L"a|1"});
    }
    EXPECT_EQ(EntriesOf(L"st"), Texts{});
    EXPECT_EQ(EntriesOf(L"s t\r"), Texts{});
}

TEST_F(IniFileTest, SetsValuesAsFarAsThereAreKeysAndValues)
{
    store.SetSection(L"s");
    store.SetValues({L"a", L"b", L"c"}, {L"1", L"2"});
    EXPECT_EQ(Entries(), (Texts{L"a|1", L"b|2"}));
    store.SetValues({L"b"}, {L"3", L"4"});
    EXPECT_EQ(Entries(), (Texts{L"a|1", L"b|3"}));
    store.SetValues({}, {L"5"});
    store.SetValues({L"x"}, {});
    EXPECT_EQ(Entries(), (Texts{L"a|1", L"b|3"}));
    store.SetValues({L"[d]", L"d\t"}, {L"6", L"7"});
    EXPECT_EQ(Entries(), (Texts{L"a|1", L"b|3", L"d|7"}));
}

TEST_F(IniFileTest, SetsNumbersInDecimal)
{
    store.SetBoolValue(L"yes", 1);
    store.SetBoolValue(L"no", 0);
    store.SetBoolValue(L"most", 255);
    EXPECT_EQ(Entries(), (Texts{L"yes|1", L"no|0", L"most|255"}));
}

TEST_F(IniFileTest, DeletesASectionOfExactlyThatName)
{
    Load("x = 0\n[b]\na = 1\n[a]\na = 2\n[B]\na = 3\n[b]\nc = 4\n");
    for (const wchar_t* const name : {L" b", L"[b]", L"c", L"b\t"}) {
        store.DeleteSection(name);
    }
    EXPECT_EQ(EntriesOf(L"b"), (Texts{L"a|1", L"c|4"}));
    store.DeleteSection(L"b");
    EXPECT_EQ(Entries(), Texts{});
    EXPECT_EQ(Value(L"a"), L"none");
    store.SetValue(L"n", L"5"); // in the section that is still the current one
    EXPECT_EQ(EntriesOf(L"b"), Texts{L"n|5"});
    EXPECT_EQ(EntriesOf(L"a"), Texts{L"a|2"});
    EXPECT_EQ(EntriesOf(L"B"), Texts{L"a|3"});
    store.DeleteSection(L"");
    EXPECT_EQ(EntriesOf(L""), Texts{});
}

TEST_F(IniFileTest, SortsByCharacterCode)
{
    Load("[b]\na = 1\nB = 2\n = 3\n\xC3\xA9 = 4\nab = 5\n a = 6\n[B]\nz = 7\na = 8\n");
    store.Sort();
    EXPECT_EQ(EntriesOf(L"b"), (Texts{L"|3", L" a|6", L"B|2", L"a|1", L"ab|5", L"\u00E9|4"}));
    EXPECT_EQ(EntriesOf(L"B"), (Texts{L"a|8", L"z|7"}));
    EXPECT_EQ(Value(L"z"), L"7");
}

TEST_F(IniFileTest, SwapsTwoEntriesWhereverTheyStand)
{
    Load("[s]\na = 1\nb = 2\n[t]\nc = 3\nd = 4\n");
    store.SwapEntries(0, 1);
    store.SwapEntries(2, 2);
    EXPECT_EQ(EntriesOf(L"s"), (Texts{L"b|2", L"a|1"}));
    store.SwapEntries(0, 3);
    EXPECT_EQ(EntriesOf(L"t"), (Texts{L"d|4", L"c|3"}));
    EXPECT_EQ(EntriesOf(L"s"), (Texts{L"a|1", L"b|2"}));
    for (const wchar_t* const key : {L"a", L"b"}) {
        EXPECT_NE(Value(key), L"none");
    }
    store.SetSection(L"t");
    store.SetValue(L"c", L"5");
    store.SetValue(L"d", L"6");
    EXPECT_EQ(EntriesOf(L"t"), (Texts{L"d|6", L"c|5"}));
}

TEST_F(IniFileTest, RefusesToSwapWhatIsNotThere)
{
    EXPECT_EQ(ResultOfSwap(0, 0), ResultCode::InvalidArgument);
    Load("[s]\na = 1\nb = 2\n");
    EXPECT_EQ(ResultOfSwap(0, 2), ResultCode::InvalidArgument);
    EXPECT_EQ(ResultOfSwap(2, 0), ResultCode::InvalidArgument);
    EXPECT_EQ(ResultOfSwap(static_cast<std::size_t>(-1), 1), ResultCode::InvalidArgument);
    EXPECT_EQ(EntriesOf(L"s"), (Texts{L"a|1", L"b|2"}));
    EXPECT_EQ(ResultOfSwap(1, 0), ResultCode::Ok);
}

TEST_F(IniFileTest, FindsTheFirstOfSeveralSpellingsWhenCaseDoesNotMatter)
{
    Load("[S]\nKey = 1\n[s]\nkEY = 2\n");
    IniFileTestAccess::SetCaseSensitive(store, false);
    store.SetSection(L"s");
    EXPECT_EQ(Value(L"KEY"), L"1");
    EXPECT_EQ(Value(L"[key]"), L"1");
    store.SwapEntries(0, 1);
    EXPECT_EQ(Value(L"key"), L"2");
    store.SwapEntries(0, 1);
    // Unchanged is what is found so; what is set goes by the exact spelling.
    store.SetValue(L"kEY", L"1");
    EXPECT_EQ(Entries(), Texts{L"kEY|2"});
    EXPECT_FALSE(IsDirty());
    store.SetValue(L"kEY", L"3");
    EXPECT_EQ(Entries(), Texts{L"kEY|3"});
    store.SetValue(L"key", L"4");
    EXPECT_EQ(Entries(), (Texts{L"kEY|3", L"key|4"}));
    store.DeleteSection(L"S");
    EXPECT_EQ(Entries(), (Texts{L"kEY|3", L"key|4"}));
}

} // namespace
} // namespace sitekeeper
