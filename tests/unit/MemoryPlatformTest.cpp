// What the platform in memory can do beyond the ports' contracts, for which it has no real counterpart to be held to.
#include "support/MemoryPlatform.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

const std::vector<std::byte> SomeBytes{std::byte{1}, std::byte{2}};

TEST(MemoryRegistryTest, RefusesReadingByAccess)
{
    MemoryRegistry registry;
    registry.SetBytes(Hive::CurrentUser, L"A\\B", L"V", ValueType::Text, SomeBytes);
    const auto read = [&registry](KeyAccess access) {
        return registry.ReadValue(Hive::CurrentUser, L"a\\b", L"v", access, 100);
    };
    EXPECT_EQ(read(KeyAccess::Read), SomeBytes);
    registry.RefuseReading(Hive::CurrentUser, L"A\\B", KeyAccess::Read);
    EXPECT_EQ(read(KeyAccess::Read), std::nullopt);
    EXPECT_EQ(read(KeyAccess::QueryValue), SomeBytes);
    registry.RefuseReading(Hive::CurrentUser, L"A\\B", KeyAccess::QueryValue);
    EXPECT_EQ(read(KeyAccess::QueryValue), std::nullopt);
}

TEST(MemoryRegistryTest, RefusesWritingByKey)
{
    const auto write = [](MemoryRegistry& registry) {
        return registry.WriteValue(Hive::CurrentUser, L"A\\B\\C", L"V", ValueType::Text, SomeBytes);
    };
    const struct
    {
        const wchar_t* refused = nullptr;
        State left;
    } rows[] = {
        {L"", {}},
        {L"A", {}},
        {L"A\\B", {L"HKCU\\A"}},
        {L"A\\B\\C", {L"HKCU\\A", L"HKCU\\A\\B"}},
    };
    for (const auto& row : rows) {
        MemoryRegistry registry;
        registry.RefuseWriting(Hive::CurrentUser, row.refused);
        EXPECT_FALSE(write(registry));
        EXPECT_EQ(registry.Listing(), row.left) << row.refused;
    }
    MemoryRegistry registry;
    registry.RefuseWriting(Hive::LocalMachine, L"A");
    EXPECT_TRUE(write(registry));
}

TEST(MemoryRegistryTest, RefusesAnExistingKeyButNotThoseBelow)
{
    MemoryRegistry registry;
    registry.SetBytes(Hive::CurrentUser, L"A\\B", L"V", ValueType::Text, SomeBytes);
    registry.RefuseWriting(Hive::CurrentUser, L"A");
    EXPECT_FALSE(registry.WriteValue(Hive::CurrentUser, L"A", L"V", ValueType::Text, SomeBytes));
    EXPECT_TRUE(registry.WriteValue(Hive::CurrentUser, L"A\\B", L"W", ValueType::Text, SomeBytes));
}

TEST(MemoryRegistryTest, EnumeratesInASetOrderWhileTheNamesAreThose)
{
    MemoryRegistry registry;
    const auto first = [&registry] {
        std::wstring name;
        EXPECT_EQ(registry.OpenSubKeys(Hive::CurrentUser, L"K").keys->ReadName(0, name), RegistryStatus::Success);
        return name;
    };
    registry.AddKey(Hive::CurrentUser, L"K\\a");
    registry.AddKey(Hive::CurrentUser, L"K\\b\\c");
    EXPECT_EQ(first(), L"a");
    registry.SetOrder(Hive::CurrentUser, L"k", {L"b", L"a"});
    EXPECT_EQ(first(), L"b");
    registry.AddKey(Hive::CurrentUser, L"K\\d");
    EXPECT_EQ(first(), L"a");
    registry.RefuseReading(Hive::CurrentUser, L"K", KeyAccess::QueryValue);
    EXPECT_EQ(registry.OpenSubKeys(Hive::CurrentUser, L"K").status, RegistryStatus::AccessDenied);
}

TEST(MemoryRegistryTest, ListsEveryDifference)
{
    MemoryRegistry registry;
    registry.SetText(Hive::LocalMachine, L"K", L"Text", L"x");
    registry.SetNumber(Hive::LocalMachine, L"K", L"Number", 258);
    registry.SetBytes(Hive::LocalMachine, L"K", L"Odd", ValueType::Text, SomeBytes);
    EXPECT_EQ(registry.Listing(), (State{L"HKLM\\K", L"HKLM\\K : Number = type 4: 02 01 00 00",
                                         L"HKLM\\K : Odd = type 1: 01 02", L"HKLM\\K : Text = \"x\""}));
    registry.RemoveValue(Hive::LocalMachine, L"k", L"TEXT");
    EXPECT_FALSE(registry.Find(Hive::LocalMachine, L"K", L"Text"));
    EXPECT_EQ(registry.Listing().size(), 3U);
}

TEST(MemoryFileSystemTest, RefusesWhatItIsToldTo)
{
    MemoryFileSystem files;
    files.RefuseWriting(L"C:\\A");
    EXPECT_FALSE(files.MakeFolder(L"c:\\a"));
    EXPECT_FALSE(files.WriteShortcut(L"C:\\A", {}));
    EXPECT_TRUE(files.MakeFolder(L"C:\\B"));
    EXPECT_EQ(files.Listing(), (State{L"C:\\", L"C:\\B\\"}));
}

TEST(MemoryFileSystemTest, KeepsTheFirstSpelling)
{
    MemoryFileSystem files;
    files.AddFile(L"D:\\Folder\\File.lnk", "text");
    EXPECT_TRUE(files.WriteShortcut(L"d:\\folder\\FILE.LNK", {L"t", L"a", L"w", L"i", 1}));
    EXPECT_EQ(files.Listing(),
              (State{L"C:\\", L"D:\\", L"D:\\Folder\\", L"D:\\Folder\\File.lnk -> t | a | w | i | 1"}));
    EXPECT_EQ(files.ContentOf(L"D:\\Folder\\File.lnk"), std::nullopt);
    files.Remove(L"D:\\Folder\\file.lnk");
    EXPECT_FALSE(files.Exists(L"D:\\Folder\\File.lnk"));
}

TEST(MemoryFileSystemTest, KnowsSharesAndOtherDrives)
{
    MemoryFileSystem files;
    files.AddFolder(L"\\\\server\\share\\A");
    files.SetCurrentFolder(L"E:\\Here\\And\\There");
    EXPECT_TRUE(files.Exists(L"\\\\SERVER\\share\\a"));
    EXPECT_FALSE(files.Exists(L"E:\\Here"));
    EXPECT_EQ(files.FullPath(L"x"), L"E:\\Here\\And\\There\\x");
    EXPECT_EQ(files.FullPath(L"..\\x"), L"E:\\Here\\And\\x");
    EXPECT_EQ(files.FullPath(L"E:x"), L"E:\\Here\\And\\There\\x");
    EXPECT_EQ(files.FullPath(L"\\x"), L"E:\\x");
    EXPECT_EQ(files.FullPath(L"F:x"), L"F:\\x");
    EXPECT_EQ(files.FullPath(L"\\\\server\\share\\..\\..\\x"), L"\\\\server\\share\\x");
}

TEST(MemoryModulesTest, CountLoadingAndReleasing)
{
    MemoryModules modules;
    modules.AddLibrary(L"a.dll");
    modules.AddLibrary(L"b.dll");
    const ModuleId first = modules.Load(L"A.DLL");
    EXPECT_EQ(modules.Load(L"a.dll"), first);
    EXPECT_NE(modules.Load(L"b.dll"), first);
    modules.Release(first);
    EXPECT_EQ(modules.Loaded(), (State{L"a.dll", L"b.dll"}));
    modules.Release(first);
    EXPECT_EQ(modules.Loaded(), State{L"b.dll"});
    EXPECT_EQ(modules.StrayReleases(), 0);
    modules.Release(first);
    EXPECT_EQ(modules.StrayReleases(), 1);
}

TEST(ScriptedMessageBoxesTest, FailATestThatShowsMoreOrFewerBoxes)
{
    EXPECT_NONFATAL_FAILURE(ScriptedMessageBoxes().Show(WindowId::None, L"text", std::nullopt, MessageStyle::Ok),
                            "unexpected message box");
    EXPECT_NONFATAL_FAILURE(ScriptedMessageBoxes().Expect(), "did not come");
    ScriptedMessageBoxes boxes;
    boxes.AnswerAll(Answer::Ok);
    boxes.Expect(Answer::None);
    EXPECT_EQ(boxes.Show(WindowId::None, L"first", std::nullopt, MessageStyle::Ok), Answer::None);
    EXPECT_EQ(boxes.Show(WindowId::None, L"second", L"caption", MessageStyle::Error), Answer::Ok);
    EXPECT_EQ(boxes.Shown().back(),
              (ScriptedMessageBoxes::Box{WindowId::None, L"second", L"caption", MessageStyle::Error}));
}

TEST(ScriptedFolderChooserTest, FailsATestThatAsksMoreOrLess)
{
    std::wstring path = L"C:\\Old";
    EXPECT_NONFATAL_FAILURE(ScriptedFolderChooser().Choose(L"title", path), "unexpected folder chooser");
    EXPECT_EQ(path, L"");
    EXPECT_NONFATAL_FAILURE(ScriptedFolderChooser().ExpectCancel(), "did not come");
}

} // namespace
} // namespace sitekeeper
