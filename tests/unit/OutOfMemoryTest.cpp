// What an error leaves behind that ends an operation in its middle, most of all that there is no memory.
#include "access/AccessLists.h"
#include "access/IniFile.h"
#include "app/ErrorReport.h"
#include "autocad/TrustedPathKeys.h"
#include "support/AutoCADTree.h"
#include "support/FaultyPlatform.h"

#include <gtest/gtest.h>
#include <new>
#include <optional>
#include <stdexcept>

namespace sitekeeper {
namespace {

using Names = std::vector<std::wstring>;

constexpr const wchar_t* LoadedPath = L"C:\\Data\\list.ini";
constexpr const char* Content = "[a]\nx = 1\ny = 2\n";

/// Has no memory for a text with a character that is not plain.
class PoorCodePage final : public CodePage
{
public:
    void Decode(std::string_view bytes, std::wstring& text) const override
    {
        for (const char byte : bytes) {
            if (isPoor && static_cast<signed char>(byte) < 0) {
                throw std::bad_alloc();
            }
            text += static_cast<wchar_t>(static_cast<unsigned char>(byte));
        }
    }
    [[nodiscard]] bool Encode(std::wstring_view /*text*/, std::string& /*bytes*/) const override { return false; }

    bool isPoor = true;
};

class StoreCutOff : public ::testing::Test
{
protected:
    StoreCutOff() { files.AddFile(LoadedPath, Content); }

    MemoryFileSystem files;
    Utf8CodePage codePage;
};

TEST_F(StoreCutOff, SavesNothingWhenAnErrorEndsAnEdit)
{
    try {
        CIniFile store(files, codePage, L"");
        store.Open(LoadedPath);
        store.DeleteSection(L"a"); // and what was to stand there instead
        throw std::runtime_error("no more");
    } catch (const std::runtime_error&) {
    }
    EXPECT_EQ(files.ContentOf(LoadedPath), Content);
}

/// Uses a store while an error is on its way.
class Cleaner
{
public:
    explicit Cleaner(FileSystem& files) : m_files(files) {}
    Cleaner(const Cleaner&) = delete;
    Cleaner& operator=(const Cleaner&) = delete;
    ~Cleaner()
    {
        const Utf8CodePage codePage;
        CIniFile store(m_files, codePage, L"");
        store.Open(LoadedPath);
        store.DeleteSection(L"a");
    }

private:
    FileSystem& m_files;
};

TEST_F(StoreCutOff, SavesWhatIsDoneBecauseOfAnotherError)
{
    try {
        const Cleaner cleaner(files);
        throw std::runtime_error("another one");
    } catch (const std::runtime_error&) {
    }
    EXPECT_EQ(files.ContentOf(LoadedPath), "");
}

TEST_F(StoreCutOff, TakesNoPartOfAFileForAllOfIt)
{
    files.AddFile(L"C:\\Data\\other.ini", "[a]\nplain = 1\n\xC3\xA9 = 2\n");
    const PoorCodePage poor;
    CIniFile store(files, poor, L"");
    store.Open(LoadedPath);
    store.SetSection(L"a");
    store.SetValue(L"x", L"changed");
    EXPECT_THROW(store.Open(L"C:\\Data\\other.ini"), std::bad_alloc);
    Names keys;
    Names values;
    store.SetSection(L"a");
    store.GetSectionEntries(keys, values);
    EXPECT_EQ(keys, Names{});
    EXPECT_EQ(store.Save(false), CIniFile::Success);
    EXPECT_EQ(files.ContentOf(L"C:\\Data\\other.ini"), "[a]\nplain = 1\n\xC3\xA9 = 2\n");
}

TEST_F(StoreCutOff, FindsWhatItReadBeforeTheError)
{
    PoorCodePage poor;
    std::string text = "[a]\n";
    for (int number = 0; number < 100; ++number) {
        text += "key " + std::to_string(number) + " = some value\n";
    }
    text += "\xC3\xA9\n";
    CIniFile store(files, poor, L"");
    TextReader broken(text, poor);
    EXPECT_THROW(store.Parse(broken), std::bad_alloc);
    TextReader whole(Content, poor);
    store.Parse(whole);
    Names keys;
    Names values;
    store.GetSectionEntries(keys, values);
    EXPECT_GE(keys.size(), 2U);
    for (const std::wstring& key : keys) {
        std::wstring value;
        store.GetValue(key, value, L"(not found)");
        EXPECT_NE(value, L"(not found)");
        store.SetValue(key, L"changed");
    }
    store.GetSectionEntries(keys, values);
    EXPECT_EQ(values, Names(keys.size(), L"changed"));
}

TEST(TextReaderWithoutMemory, GivesTheLineAgain)
{
    PoorCodePage poor;
    TextReader reader("plain\n\xC3\xA9\nthe last\n", poor);
    std::wstring_view line;
    EXPECT_TRUE(reader.ReadLine(line));
    EXPECT_THROW(reader.ReadLine(line), std::bad_alloc);
    poor.isPoor = false;
    EXPECT_TRUE(reader.ReadLine(line));
    EXPECT_EQ(line, L"\u00C3\u00A9"); // byte by byte
    EXPECT_TRUE(reader.ReadLine(line));
    EXPECT_EQ(line, L"the last");
}

TEST(AccessListsCutOff, KeepTheFileWhenAnErrorEndsARebuild)
{
    for (int number = 1; number <= 4; ++number) { // the folder, the file, the servers, the users of the first
        MemoryPlatform memory;
        SettingsOn(memory.Ports()).WriteFolder(SuiteFolder::Datafiles, L"C:\\Data\\");
        memory.files.AddFile(L"C:\\Data\\UserDatafile.ini", "[User List]\nzoe = zoe\n");
        memory.accounts.AddServer(L"ZEUS", {L"adam"});
        FaultyPlatform faulty(memory.Ports(), FaultPlan(number, FaultKind::OutOfMemory));
        const Platform ports = faulty.Ports();
        const InstallationSettings settings = SettingsOn(ports);
        Names names;
        EXPECT_THROW(AccessLists(ports, settings, L"").ReadAccessList(AccessList::General, names, Rebuild::Yes),
                     std::bad_alloc);
        EXPECT_EQ(memory.files.ContentOf(L"C:\\Data\\UserDatafile.ini"), "[User List]\nzoe = zoe\n");
    }
}

TEST(FindAutoCADTrustedPathKeysCutOff, NamesAllProductsOrNone)
{
    MemoryPlatform memory;
    AddProduct(memory.registry, L"R21.0", L"A", L"C:\\A");
    AddProduct(memory.registry, L"R24.0", L"B", L"C:\\B");
    Names keys;
    Names releases;
    int number = 0;
    for (bool isCutOff = true; isCutOff;) {
        FaultyPlatform faulty(memory.Ports(), FaultPlan(++number, FaultKind::OutOfMemory));
        isCutOff = false;
        try {
            FindAutoCADTrustedPathKeys(faulty.Ports().registry, keys, releases);
        } catch (const std::bad_alloc&) {
            isCutOff = true;
            EXPECT_EQ(keys, Names{});
            EXPECT_EQ(releases, Names{});
        }
    }
    EXPECT_EQ(number, 10);
    EXPECT_EQ(releases, (Names{L"R21", L"R24"}));
}

TEST(ReportErrorWithoutMemory, RaisesNothingItself)
{
    MemoryPlatform memory;
    FaultyPlatform faulty(memory.Ports(), FaultPlan(1, FaultKind::OutOfMemory));
    EXPECT_NO_THROW(
        ReportError(faulty.Ports().messages, WindowId::None, std::make_exception_ptr(std::runtime_error("any"))));
    EXPECT_TRUE(faulty.HasFailed());
}

} // namespace
} // namespace sitekeeper
