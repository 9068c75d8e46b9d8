#include "settings/InstallationSettings.h"

#include "settings/Product.h"
#include "settings/RegistryText.h"
#include "support/MemoryPlatform.h"
#include "text/Utf16.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

class SettingsTest : public ::testing::Test
{
protected:
    void SetFolder(const wchar_t* name, const std::wstring& text)
    {
        memory.registry.SetText(Hive::LocalMachine, SuiteKey, name, text);
    }
    void SetFolderBytes(ValueType type, const std::vector<std::byte>& bytes)
    {
        memory.registry.SetBytes(Hive::LocalMachine, SuiteKey, L"LocalAppPath", type, bytes);
    }

    MemoryPlatform memory;
    InstallationSettings settings = SettingsOn(memory.Ports());
};

using InstallationFolderReaders = SettingsTest;
using StringWriter = SettingsTest;
using CommonFolders = SettingsTest;
using RegistryText = SettingsTest;

const std::wstring CurrentVersionKey = L"Software\\Microsoft\\Windows\\CurrentVersion";

TEST_F(InstallationFolderReaders, ReadTheirOwnValues)
{
    SetFolder(L"LocalAppPath", L"C:\\Suite\\");
    SetFolder(L"NetworkAppPath", L"N:\\Suite\\");
    SetFolder(L"DatafilesPath", L"D:\\Data\\");
    EXPECT_EQ(settings.ReadLocalAppPath(), L"C:\\Suite\\");
    EXPECT_EQ(settings.ReadNetworkAppPath(), L"N:\\Suite\\");
    EXPECT_EQ(settings.ReadDatafilesPath(), L"D:\\Data\\");
}

TEST_F(InstallationFolderReaders, LookIntoTheMachinesHiveOnly)
{
    memory.registry.SetText(Hive::CurrentUser, SuiteKey, L"LocalAppPath", L"C:\\Suite\\");
    EXPECT_EQ(settings.ReadLocalAppPath(), L"");
}

TEST_F(InstallationFolderReaders, PutABackslashBehindWhatIsNotEmpty)
{
    const struct
    {
        const wchar_t* stored;
        const wchar_t* read;
    } rows[] = {
        {L"C:\\Suite", L"C:\\Suite\\"},
        {L"C:\\Suite\\", L"C:\\Suite\\"},
        {L"C:\\Suite\\\\", L"C:\\Suite\\\\"},
        {L"", L""},
        {L"\\", L"\\"},
        {L" ", L" \\"},
        {L"C:/Suite/", L"C:/Suite/\\"},
        {L"\\\\server\\share", L"\\\\server\\share\\"},
    };
    for (const auto& row : rows) {
        SetFolder(L"LocalAppPath", row.stored);
        SetFolder(L"NetworkAppPath", row.stored);
        SetFolder(L"DatafilesPath", row.stored);
        EXPECT_EQ(settings.ReadLocalAppPath(), row.read);
        EXPECT_EQ(settings.ReadNetworkAppPath(), row.read);
        EXPECT_EQ(settings.ReadDatafilesPath(), row.read);
    }
}

TEST_F(InstallationFolderReaders, AreEmptyWithoutKeyOrValue)
{
    EXPECT_EQ(settings.ReadLocalAppPath(), L"");
    SetFolder(L"SomethingElse", L"x");
    EXPECT_EQ(settings.ReadLocalAppPath(), L"");
    EXPECT_EQ(settings.ReadNetworkAppPath(), L"");
    EXPECT_EQ(settings.ReadDatafilesPath(), L"");
}

TEST_F(InstallationFolderReaders, AskForNoMoreThanTheRightToQuery)
{
    SetFolder(L"LocalAppPath", L"C:\\Suite\\");
    memory.registry.RefuseReading(Hive::LocalMachine, SuiteKey, KeyAccess::Read);
    EXPECT_EQ(settings.ReadLocalAppPath(), L"C:\\Suite\\");
    memory.registry.RefuseReading(Hive::LocalMachine, SuiteKey, KeyAccess::QueryValue);
    EXPECT_EQ(settings.ReadLocalAppPath(), L"");
}

TEST_F(InstallationFolderReaders, SeeEveryChangeAtOnce)
{
    SetFolder(L"LocalAppPath", L"C:\\Old\\");
    EXPECT_EQ(settings.ReadLocalAppPath(), L"C:\\Old\\");
    SetFolder(L"LocalAppPath", L"C:\\New\\");
    EXPECT_EQ(settings.ReadLocalAppPath(), L"C:\\New\\");
}

// The buffer holds 2048 bytes: 1023 characters with their terminator, or 1024 without one.
TEST_F(InstallationFolderReaders, ReadUpTo2048Bytes)
{
    const struct
    {
        std::size_t characters;
        bool hasTerminator;
        bool isRead;
    } rows[] = {{1022, true, true},  {1023, true, true},   {1024, true, false},
                {1024, false, true}, {1025, false, false}, {1025, true, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(std::to_string(row.characters) + (row.hasTerminator ? " and a terminator" : " alone"));
        const std::wstring text(row.characters, L'x');
        std::vector<std::byte> bytes = EncodeUtf16(text);
        bytes.resize(bytes.size() + (row.hasTerminator ? 2 : 0));
        SetFolderBytes(ValueType::Text, bytes);
        EXPECT_EQ(settings.ReadLocalAppPath(), row.isRead ? text + L"\\" : L"");
    }
}

TEST_F(InstallationFolderReaders, ReadAnOddNumberOfBytesToTheLastWholeCharacter)
{
    std::vector<std::byte> bytes = EncodeUtf16(L"C:\\A");
    bytes.push_back(std::byte{0x42});
    SetFolderBytes(ValueType::Text, bytes);
    EXPECT_EQ(settings.ReadLocalAppPath(), L"C:\\A\\");

    SetFolderBytes(ValueType::Text, std::vector<std::byte>(2047, std::byte{0x20}));
    EXPECT_EQ(settings.ReadLocalAppPath(), std::wstring(1023, L'\u2020') + L"\\");

    SetFolderBytes(ValueType::Text, {std::byte{0x42}});
    EXPECT_EQ(settings.ReadLocalAppPath(), L"");
    SetFolderBytes(ValueType::Text, {});
    EXPECT_EQ(settings.ReadLocalAppPath(), L"");
}

// The value's type is not looked at; what stands in its bytes is.
TEST_F(InstallationFolderReaders, TakeTheBytesOfAnyType)
{
    constexpr std::uint32_t OtherTypes[] = {0, 2, 3, 4, 7, 11}; // none, expandable, binary, numbers, several texts
    for (const std::uint32_t type : OtherTypes) {
        SetFolderBytes(static_cast<ValueType>(type), EncodeUtf16(L"C:\\A"));
        EXPECT_EQ(settings.ReadLocalAppPath(), L"C:\\A\\") << type;
    }
    memory.registry.SetNumber(Hive::LocalMachine, SuiteKey, L"LocalAppPath", 0x00420041);
    EXPECT_EQ(settings.ReadLocalAppPath(), L"AB\\");
    memory.registry.SetNumber(Hive::LocalMachine, SuiteKey, L"LocalAppPath", 0);
    EXPECT_EQ(settings.ReadLocalAppPath(), L"");
}

TEST_F(InstallationFolderReaders, EndAtTheFirstZero)
{
    SetFolderBytes(ValueType::Text, EncodeUtf16(std::wstring_view(L"C:\\A\0C:\\B\0", 10)));
    EXPECT_EQ(settings.ReadLocalAppPath(), L"C:\\A\\");
}

TEST_F(StringWriter, StoresTheTextWithItsTerminator)
{
    EXPECT_TRUE(settings.WriteString(Hive::CurrentUser, L"Software\\A", L"Name", L"AB"));
    const auto value = memory.registry.Find(Hive::CurrentUser, L"Software\\A", L"Name");
    ASSERT_TRUE(value);
    EXPECT_EQ(value->type, ValueType::Text);
    EXPECT_EQ(value->bytes, EncodeUtf16(std::wstring_view(L"AB\0", 3)));
}

TEST_F(StringWriter, StoresTwoBytesForAnEmptyText)
{
    EXPECT_TRUE(settings.WriteFolder(SuiteFolder::Datafiles, L""));
    const auto value = memory.registry.Find(Hive::LocalMachine, SuiteKey, L"DatafilesPath");
    ASSERT_TRUE(value);
    EXPECT_EQ(value->bytes, std::vector<std::byte>(2));
    EXPECT_EQ(settings.ReadDatafilesPath(), L"");
}

TEST_F(StringWriter, ReplacesAValueOfAnyType)
{
    memory.registry.SetNumber(Hive::LocalMachine, SuiteKey, L"LocalAppPath", 5);
    EXPECT_TRUE(settings.WriteFolder(SuiteFolder::Program, L"C:\\Suite\\"));
    EXPECT_EQ(settings.ReadLocalAppPath(), L"C:\\Suite\\");
}

TEST_F(StringWriter, WritesFoldersAsTheyStandToTheirOwnValues)
{
    EXPECT_TRUE(settings.WriteFolder(SuiteFolder::Program, L"C:\\P"));
    EXPECT_TRUE(settings.WriteFolder(SuiteFolder::Application, L"C:\\A\\"));
    EXPECT_TRUE(settings.WriteFolder(SuiteFolder::Datafiles, L"D"));
    EXPECT_EQ(memory.registry.Listing(), (State{
                                             L"HKLM\\Software",
                                             L"HKLM\\Software\\ORIVEL",
                                             L"HKLM\\Software\\ORIVEL\\LX Plus",
                                             L"HKLM\\Software\\ORIVEL\\LX Plus\\2023",
                                             L"HKLM\\Software\\ORIVEL\\LX Plus\\2023 : DatafilesPath = \"D\"",
                                             L"HKLM\\Software\\ORIVEL\\LX Plus\\2023 : LocalAppPath = \"C:\\P\"",
                                             L"HKLM\\Software\\ORIVEL\\LX Plus\\2023 : NetworkAppPath = \"C:\\A\\\"",
                                         }));
}

TEST_F(StringWriter, ReportsThatNothingCouldBeStored)
{
    memory.registry.RefuseWriting(Hive::LocalMachine, SuiteKey);
    EXPECT_FALSE(settings.WriteFolder(SuiteFolder::Program, L"C:\\Suite\\"));
    EXPECT_EQ(settings.ReadLocalAppPath(), L"");

    memory.registry.RefuseWriting(Hive::CurrentUser, L"");
    EXPECT_FALSE(settings.WriteString(Hive::CurrentUser, L"Software\\A", L"Name", L"x"));
    EXPECT_FALSE(memory.registry.HasKey(Hive::CurrentUser, L"Software"));
}

TEST_F(RegistryText, KeepsCharactersOfAllPlanes)
{
    const std::wstring text = L"C:\\M\u00FCller\\\u4E2D\\\U0001F600";
    EXPECT_TRUE(WriteRegistryText(memory.registry, Hive::CurrentUser, L"K", L"V", text));
    EXPECT_EQ(ReadRegistryText(memory.registry, Hive::CurrentUser, L"K", L"V", KeyAccess::Read), text);
}

TEST_F(RegistryText, OpensItsKeyWithTheAccessAskedFor)
{
    memory.registry.SetText(Hive::CurrentUser, L"K", L"V", L"x");
    memory.registry.RefuseReading(Hive::CurrentUser, L"K", KeyAccess::Read);
    EXPECT_EQ(ReadRegistryText(memory.registry, Hive::CurrentUser, L"K", L"V", KeyAccess::QueryValue), L"x");
    EXPECT_EQ(ReadRegistryText(memory.registry, Hive::CurrentUser, L"K", L"V", KeyAccess::Read), L"");
}

TEST_F(CommonFolders, AddTheMakersFolderToTheRegisteredOne)
{
    const struct
    {
        const wchar_t* stored;
        const wchar_t* read;
    } rows[] = {
        {L"C:\\Program Files\\Common Files", L"C:\\Program Files\\Common Files\\ORIVEL\\"},
        {L"C:\\Program Files\\Common Files\\", L"C:\\Program Files\\Common Files\\ORIVEL\\"},
        {L"", L""},
    };
    EXPECT_EQ(settings.ReadCommonFilesFolder(), L"");
    for (const auto& row : rows) {
        memory.registry.SetText(Hive::LocalMachine, CurrentVersionKey, L"CommonFilesDir", row.stored);
        memory.environment.Set(L"CommonProgramFiles", row.stored);
        EXPECT_EQ(settings.ReadCommonFilesFolder(), row.read);
        EXPECT_EQ(settings.ReadCommonProgramFilesFolder(), row.read);
    }
}

TEST_F(CommonFolders, AreIndependentOfEachOther)
{
    memory.environment.Set(L"CommonProgramFiles", L"C:\\One");
    EXPECT_EQ(settings.ReadCommonFilesFolder(), L"");
    EXPECT_EQ(settings.ReadCommonProgramFilesFolder(), L"C:\\One\\ORIVEL\\");
    memory.environment.Remove(L"CommonProgramFiles");
    memory.registry.SetText(Hive::LocalMachine, CurrentVersionKey, L"CommonFilesDir", L"C:\\Two");
    EXPECT_EQ(settings.ReadCommonFilesFolder(), L"C:\\Two\\ORIVEL\\");
    EXPECT_EQ(settings.ReadCommonProgramFilesFolder(), L"");
}

TEST_F(CommonFolders, HaveTheirOwnLimits)
{
    const std::wstring longFolder(5000, L'x');
    memory.registry.SetText(Hive::LocalMachine, CurrentVersionKey, L"CommonFilesDir", longFolder);
    EXPECT_EQ(settings.ReadCommonFilesFolder(), L"");
    memory.environment.Set(L"CommonProgramFiles", longFolder);
    EXPECT_EQ(settings.ReadCommonProgramFilesFolder(), longFolder + L"\\ORIVEL\\");
}

} // namespace
} // namespace sitekeeper
