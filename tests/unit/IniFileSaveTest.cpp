// What a store writes and when; what a failed save leaves.
#include "access/IniFile.h"
#include "support/IniFileTestAccess.h"
#include "support/MemoryFileSystem.h"
#include "support/Utf8CodePage.h"

#include <gtest/gtest.h>
#include <map>

namespace sitekeeper {
namespace {

using Texts = std::vector<std::wstring>;

constexpr const wchar_t* Path = L"C:\\Data\\list.ini";

class IniFileSaveTest : public ::testing::Test
{
protected:
    IniFileSaveTest() { files.AddFolder(L"C:\\Data"); }

    [[nodiscard]] std::string Content() const { return files.ContentOf(Path).value_or("(no file)"); }
    CIniFile& Opened(const std::string& content)
    {
        files.AddFile(Path, content);
        store.emplace(files, codePage, L"");
        EXPECT_EQ(store->Open(Path), CIniFile::Success);
        return *store;
    }
    /// What a forced save makes of a file.
    [[nodiscard]] std::string Rewritten(const std::string& content)
    {
        EXPECT_EQ(Opened(content).Save(true), CIniFile::Success);
        return Content();
    }
    [[nodiscard]] Texts KeysOf(const std::wstring& section)
    {
        Texts keys;
        Texts values;
        store->SetSection(section);
        store->GetSectionEntries(keys, values);
        return keys;
    }

    MemoryFileSystem files;
    Utf8CodePage codePage;
    std::optional<CIniFile> store;
};

TEST_F(IniFileSaveTest, WritesSectionsAndKeysInOrder)
{
    constexpr std::pair<const char*, const char*> Cases[] = {
        {"", ""},
        {"[s]\n", ""},
        {"[Users]\nbob = bob\nalice = alice\n", "[Users]\r\nalice = alice\r\nbob = bob\r\n"},
        {"[b]\nx = 1\n[a]\ny = 2\n", "[a]\r\ny = 2\r\n\r\n[b]\r\nx = 1\r\n"},
        {"[a]\nx = 1\n[B]\ny = 2\n", "[B]\r\ny = 2\r\n\r\n[a]\r\nx = 1\r\n"},
        {"[a]\nx = 1\n[]\nz = 2\ny = 3\n", "y = 3\r\nz = 2\r\n[a]\r\nx = 1\r\n"},
        {"x = 1\n", "x = 1\r\n"},
        {"[a]\nx = 1\n[b]\ny = 2\n[a]\nw = 3\n", "[a]\r\nw = 3\r\nx = 1\r\n\r\n[b]\r\ny = 2\r\n"},
        {"[a]\n; gone\nkey=value\nx = 1\n[b\n\n\n", "[a]\r\nx = 1\r\n"},
        {"[a]\nx = 1\nx = 2\n", "[a]\r\nx = 2\r\n"},
        {"[a]\nx = 1\nx = \n", "[a]\r\nx = \r\n"},
        {"[a]\n\t[k] =  v \n", "[a]\r\nk =  v \r\n"},
        {"[ \xC3\x96 ]\n\xF0\x9F\x98\x80 = 1\n\xFF = 2\n",
         "[\xC3\x96]\r\n\xEF\xBF\xBD = 2\r\n\xF0\x9F\x98\x80 = 1\r\n"},
    };
    for (const auto& [content, expected] : Cases) {
        EXPECT_EQ(Rewritten(content), expected);
    }
}

TEST_F(IniFileSaveTest, LeavesTheFileAloneWhereNothingChanged)
{
    const std::string unsorted = "[b]\nz = 1\na = 2\n; comment\n";
    EXPECT_EQ(Opened(unsorted).Save(false), CIniFile::Success);
    EXPECT_EQ(Content(), unsorted);
    store.reset();
    EXPECT_EQ(Content(), unsorted);
}

TEST_F(IniFileSaveTest, SortsTheEntriesOnlyWhenItWrites)
{
    Opened("[s]\nb = 1\na = 2\n").Save(false);
    EXPECT_EQ(KeysOf(L"s"), (Texts{L"b", L"a"}));
    store->Save(true);
    EXPECT_EQ(KeysOf(L"s"), (Texts{L"a", L"b"}));
    std::wstring value;
    store->GetValue(L"b", value, L"");
    EXPECT_EQ(value, L"1");
}

TEST_F(IniFileSaveTest, WritesTheSeparatorThatItHas)
{
    Opened("[s]\na = 1\n");
    IniFileTestAccess::SetSeparator(*store, L"=>");
    store->Save(true);
    EXPECT_EQ(Content(), "[s]\r\na=>1\r\n");
}

TEST_F(IniFileSaveTest, SavesAtItsEndWhatChanged)
{
    Opened("[s]\nb = 1\n").SetValue(L"a", L"2"); // in section "s", the last header's
    store.reset();
    EXPECT_EQ(Content(), "[s]\r\na = 2\r\nb = 1\r\n");
    Opened("[s]\nb = 1\n").SetValue(L"a", L"2");
    IniFileTestAccess::SetAutoSave(*store, false);
    store.reset();
    EXPECT_EQ(Content(), "[s]\nb = 1\n");
}

TEST_F(IniFileSaveTest, WritesAnEmptyFileWhenTheLastEntryIsGone)
{
    Opened("[s]\nb = 1\n").DeleteSection(L"s");
    store.reset();
    EXPECT_EQ(Content(), "");
    Opened("[s]\nb = 1\n").Clear();
    store.reset();
    EXPECT_EQ(Content(), "");
}

TEST_F(IniFileSaveTest, MakesAMissingFile)
{
    store.emplace(files, codePage, L"");
    EXPECT_EQ(store->Open(Path), CIniFile::CannotOpen);
    EXPECT_EQ(store->Save(false), CIniFile::Success);
    EXPECT_EQ(Content(), "(no file)");
    store->SetSection(L"s");
    store->SetValue(L"a", L"1");
    store.reset();
    EXPECT_EQ(Content(), "[s]\r\na = 1\r\n");
}

TEST(IniFileNameTest, DropsDotsAndTwoLettersFromTheEndOfTheProgramsPath)
{
    constexpr std::pair<const wchar_t*, const wchar_t*> Programs[] = {
        {L"Tree.exe", L"Tr.ini"},
        {L"Box.exe", L"Bo.ini"},
        {L"C:\\Suite\\SiteKeeper64.exe", L"C:\\Suite\\SiteKeeper64.ini"},
        {L"C:\\ex.e\\Tool", L"C:\\ex.e\\Tool.ini"},
        {L"Tool.EXE", L"Tool.EXE.ini"},
        {L"exe.exe", L".ini"},
        {L"", L".ini"},
        {L"a.b.exe", L"a.b.ini"},
    };
    for (const auto& [program, name] : Programs) {
        EXPECT_EQ(CIniFile::DefaultFileName(program), name);
    }
}

TEST_F(IniFileSaveTest, WritesBesideTheProgramWhereNoFileWasNamed)
{
    store.emplace(files, codePage, L"C:\\Data\\Tree.exe");
    store->SetValue(L"a", L"1");
    EXPECT_EQ(store->Save(false), CIniFile::Success);
    EXPECT_EQ(files.ContentOf(L"C:\\Data\\Tr.ini"), "a = 1\r\n");
    store->SetValue(L"a", L"2");
    EXPECT_EQ(store->LoadFile(), CIniFile::Success);
    EXPECT_EQ(store->Save(true), CIniFile::Success);
    EXPECT_EQ(files.ContentOf(L"C:\\Data\\Tr.ini"), "a = 1\r\n");
}

TEST_F(IniFileSaveTest, KeepsItsEntriesWhenTheFileCannotBeOpened)
{
    Opened("[s]\nb = 1\na = 2\n").SetValue(L"c", L"3");
    files.RefuseReading(Path);
    EXPECT_EQ(store->LoadFile(), CIniFile::CannotOpen);
    EXPECT_EQ(KeysOf(L"s"), (Texts{L"b", L"a", L"c"}));
    EXPECT_EQ(store->Open(L"C:\\Data\\other.ini"), CIniFile::CannotOpen);
    EXPECT_EQ(KeysOf(L"s"), (Texts{L"b", L"a", L"c"}));
    store.reset(); // still dirty, and under the other name
    EXPECT_EQ(files.ContentOf(L"C:\\Data\\other.ini"), "[s]\r\na = 2\r\nb = 1\r\nc = 3\r\n");
    EXPECT_EQ(Content(), "[s]\nb = 1\na = 2\n");
}

TEST_F(IniFileSaveTest, KeepsOrderAndChangesAfterASaveThatFailed)
{
    files.RefuseWriting(Path);
    Opened("[s]\nb = 1\na = 2\n").SetValue(L"c", L"3");
    const auto before = files.Listing();
    EXPECT_EQ(store->Save(false), CIniFile::CannotCreate);
    EXPECT_EQ(store->Save(true), CIniFile::CannotCreate);
    EXPECT_EQ(files.Listing(), before);
    EXPECT_EQ(KeysOf(L"s"), (Texts{L"b", L"a", L"c"}));
    EXPECT_EQ(store->Open(L"C:\\Data\\other.ini"), CIniFile::CannotOpen);
    EXPECT_EQ(store->Save(false), CIniFile::Success); // still dirty
    EXPECT_EQ(files.ContentOf(L"C:\\Data\\other.ini"), "[s]\r\na = 2\r\nb = 1\r\nc = 3\r\n");
}

TEST_F(IniFileSaveTest, IsStillCleanAfterAForcedSaveThatFailed)
{
    files.RefuseWriting(Path);
    EXPECT_EQ(Opened("[s]\na = 1\n").Save(true), CIniFile::CannotCreate);
    EXPECT_EQ(store->Save(false), CIniFile::Success);
}

TEST_F(IniFileSaveTest, EndsSilentlyWhenTheLastSaveFails)
{
    files.RefuseWriting(Path);
    Opened("[s]\na = 1\n").SetValue(L"b", L"2");
    store.reset();
    EXPECT_EQ(Content(), "[s]\na = 1\n");
}

TEST_F(IniFileSaveTest, WritesNothingWhenACharacterHasNoPlaceInTheCodePage)
{
    const std::wstring half(1, wchar_t{0xD800});
    const std::wstring texts[][3] = {{half, L"k", L"v"}, {L"s", L"k" + half, L"v"}, {L"s", L"k", half + L"v"}};
    for (const auto& [section, key, value] : texts) {
        Opened("[s]\nb = 1\na = 2\n").SetSection(section);
        store->SetValue(key, value);
        EXPECT_EQ(store->Save(false), CIniFile::CannotCreate);
        EXPECT_EQ(Content(), "[s]\nb = 1\na = 2\n");
        EXPECT_EQ(KeysOf(L"s").at(0), L"b");
        store->SetSection(section);
        store->SetValue(key, L"w");
        if (section != half && key != L"k" + half) { // the offence can be mended
            EXPECT_EQ(store->Save(false), CIniFile::Success);
            EXPECT_EQ(Content(), "[s]\r\na = 2\r\nb = 1\r\nk = w\r\n");
        }
    }
}

TEST_F(IniFileSaveTest, HoldsAHundredThousandEntriesAsAMapWould)
{
    std::map<std::wstring, std::map<std::wstring, std::wstring>> expected;
    store.emplace(files, codePage, L"C:\\Data\\list.ex");
    std::uint32_t number = 1;
    std::size_t count = 0;
    while (count < 120'000) {
        number = number * 1'664'525U + 1'013'904'223U;
        const std::wstring section = L"section " + std::to_wstring(number >> 29U);
        const std::wstring key = L"user" + std::to_wstring((number >> 8U) % 200'000U);
        store->SetSection(section);
        store->SetValue(key, std::to_wstring(number));
        count += expected[section].insert_or_assign(key, std::to_wstring(number)).second ? 1U : 0U;
    }
    store->DeleteSection(L"section 3");
    expected.erase(L"section 3");
    std::string bytes;
    for (const auto& [section, entries] : expected) {
        bytes += bytes.empty() ? "[" : "\r\n[";
        ASSERT_TRUE(codePage.Encode(section + L"]\r\n", bytes));
        for (const auto& [key, value] : entries) {
            ASSERT_TRUE(codePage.Encode(key + L" = " + value + L"\r\n", bytes));
        }
    }
    ASSERT_EQ(store->Save(false), CIniFile::Success);
    ASSERT_TRUE(files.ContentOf(L"C:\\Data\\list.ini") == bytes); // not printed: megabytes
    ASSERT_EQ(store->LoadFile(), CIniFile::Success);
    ASSERT_EQ(store->Save(true), CIniFile::Success);
    EXPECT_TRUE(files.ContentOf(L"C:\\Data\\list.ini") == bytes);
    for (const auto& [section, entries] : expected) {
        store->SetSection(section);
        std::wstring value;
        for (const auto& entry : entries) {
            store->GetValue(entry.first, value, L"");
            ASSERT_EQ(value, entry.second);
        }
    }
}

} // namespace
} // namespace sitekeeper
