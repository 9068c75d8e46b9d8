// What the platform in memory can do beyond the ports' contracts, for which it has no real counterpart to be held to.
#include "support/FaultyPlatform.h"

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

TEST(FaultyPlatformTest, LetsEachKindOfCallFailAsItsContractAllows)
{
    const std::function<void(const Platform&)> calls[] = {
        [](const Platform& p) {
            EXPECT_FALSE(p.registry.ReadValue(Hive::CurrentUser, L"K", L"V", KeyAccess::Read, 9));
        },
        [](const Platform& p) {
            EXPECT_FALSE(p.registry.WriteValue(Hive::CurrentUser, L"K", L"W", ValueType::Text, SomeBytes));
        },
        [](const Platform& p) { EXPECT_FALSE(p.files.Exists(L"C:\\")); },
        [](const Platform& p) { EXPECT_FALSE(p.files.FullPath(L"C:\\")); },
        [](const Platform& p) { EXPECT_FALSE(p.files.MakeFolder(L"C:\\New")); },
        [](const Platform& p) { EXPECT_FALSE(p.shell.EnterComponents()); },
        [](const Platform& p) { EXPECT_EQ(p.shell.SaveShortcut(L"C:\\a.lnk", {}), InjectedFailure); },
        [](const Platform& p) { p.shell.Explore(L"C:\\"); },
        [](const Platform& p) {
            std::wstring path = L"C:\\Old";
            p.folders.Choose(L"title", path);
            EXPECT_EQ(path, L"");
        },
        [](const Platform& p) {
            EXPECT_EQ(p.messages.Show(WindowId::None, L"text", std::nullopt, MessageStyle::Ok), Answer::None);
        },
        [](const Platform& p) { EXPECT_EQ(p.modules.Load(L"a.dll"), ModuleId::None); },
        [](const Platform& p) { EXPECT_FALSE(p.environment.Variable(L"Name")); },
        [](const Platform& p) { EXPECT_EQ(p.accounts.UserName(), L""); },
        [](const Platform& p) { EXPECT_FALSE(p.clock.ToLocal(0)); },
        [](const Platform& p) {
            EXPECT_FALSE(p.clock.FromLocal({2024, 5, 6, 7, 8, 9}));
        },
        [](const Platform& p) {
            EXPECT_FALSE(p.clock.Format(L"%Y", {2024, 5, 6, 7, 8, 9}));
        },
        [](const Platform& p) { p.help.ShowContents(WindowId::None, L"a.chm"); },
        [](const Platform& p) { p.help.ShowTopic(WindowId::None, L"a.chm::/b.htm"); },
        [](const Platform& p) { EXPECT_EQ(p.printer.Choose(WindowId::None), nullptr); },
    };
    for (const auto& call : calls) {
        MemoryPlatform memory;
        memory.registry.SetBytes(Hive::CurrentUser, L"K", L"V", ValueType::Text, SomeBytes);
        memory.modules.AddLibrary(L"a.dll");
        memory.environment.Set(L"Name", L"text");
        EXPECT_TRUE(memory.shell.EnterComponents());
        const State before = memory.CurrentState();
        FaultyPlatform faulty(memory.Ports(), 1);
        EXPECT_FALSE(faulty.HasFailed());
        call(faulty.Ports());
        EXPECT_TRUE(faulty.HasFailed());
        EXPECT_EQ(faulty.Calls().size(), 1U);
        EXPECT_EQ(memory.CurrentState(), before);
    }
}

TEST(FaultyPlatformTest, ForwardsEveryOtherCall)
{
    MemoryPlatform memory;
    FaultyPlatform faulty(memory.Ports(), 2);
    const Platform ports = faulty.Ports();
    EXPECT_TRUE(ports.files.MakeFolder(L"C:\\A"));
    EXPECT_FALSE(ports.files.MakeFolder(L"C:\\B"));
    EXPECT_TRUE(ports.files.MakeFolder(L"C:\\C"));
    EXPECT_EQ(memory.files.Listing(), (State{L"C:\\", L"C:\\A\\", L"C:\\C\\"}));
    EXPECT_EQ(faulty.Calls(), (State{L"make folder C:\\A", L"make folder C:\\B", L"make folder C:\\C"}));
    EXPECT_EQ(ports.clock.Now(), memory.clock.Now());
}

TEST(SweepFailuresTest, RunsOnceForEachCallAndStops)
{
    std::vector<int> numbers;
    const Sweep sweep{[](MemoryPlatform&) {},
                      [](const Platform& ports) {
                          if (ports.files.MakeFolder(L"C:\\A")) {
                              ports.files.MakeFolder(L"C:\\A\\B");
                          }
                      },
                      [&numbers](const FaultedRun& run) { numbers.push_back(run.number); }};
    EXPECT_EQ(SweepFailures(sweep), 2);
    EXPECT_EQ(numbers, (std::vector{1, 2}));
}

} // namespace
} // namespace sitekeeper
