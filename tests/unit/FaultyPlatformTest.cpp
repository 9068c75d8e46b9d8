// The platform whose calls fail: each kind of call as its contract allows, and no other.
#include "support/FaultyPlatform.h"

#include <functional>
#include <gtest/gtest.h>
#include <span>
#include <string>

namespace sitekeeper {
namespace {

const std::vector<std::byte> SomeBytes{std::byte{1}, std::byte{2}};

/// A platform on which each of the calls below would succeed.
void Prepare(MemoryPlatform& memory)
{
    memory.registry.SetBytes(Hive::CurrentUser, L"K\\Below", L"V", ValueType::Text, SomeBytes);
    memory.registry.SetBytes(Hive::CurrentUser, L"K", L"V", ValueType::Text, SomeBytes);
    memory.files.AddFile(L"C:\\a.ini", "content");
    memory.modules.AddLibrary(L"a.dll");
    memory.environment.Set(L"Name", L"text");
    memory.accounts.SetUserName(L"bob");
    memory.accounts.AddServer(L"ZEUS", {L"adam"});
    memory.clipboard.Set(L"from before");
    memory.web.Publish(L"https://a.example/", "a page");
    memory.processes.AddProgram(L"C:\\a.exe");
    memory.versions.Set(L"C:\\a.exe", SomeBytes);
    EXPECT_TRUE(memory.shell.EnterComponents());
}

/// Each call is the first of its platform, which fails and changes nothing.
void ExpectFailures(std::span<const std::function<void(const Platform&)>> calls)
{
    for (std::size_t place = 0; place < calls.size(); ++place) {
        SCOPED_TRACE(place);
        MemoryPlatform memory;
        Prepare(memory);
        const State before = memory.CurrentState();
        FaultyPlatform faulty(memory.Ports(), 1);
        EXPECT_FALSE(faulty.HasFailed());
        calls[place](faulty.Ports());
        EXPECT_TRUE(faulty.HasFailed());
        EXPECT_EQ(faulty.Calls().size(), 1U);
        EXPECT_EQ(memory.CurrentState(), before);
        EXPECT_EQ(memory.clipboard.Content(), L"from before");
    }
}

TEST(FaultyPlatformTest, LetsRegistryAndFilesFailAsTheirContractsAllow)
{
    const auto foundNothing = [](const FoundFile& file) { ADD_FAILURE() << ::testing::PrintToString(file.name); };
    const std::function<void(const Platform&)> calls[] = {
        [](const Platform& p) {
            EXPECT_FALSE(p.registry.ReadValue(Hive::CurrentUser, L"K", L"V", KeyAccess::Read, 9));
        },
        [](const Platform& p) {
            EXPECT_FALSE(p.registry.WriteValue(Hive::CurrentUser, L"K", L"W", ValueType::Text, SomeBytes));
        },
        [](const Platform& p) {
            const OpenedSubKeys opened = p.registry.OpenSubKeys(Hive::CurrentUser, L"K");
            EXPECT_EQ(opened.status, InjectedStatus);
            EXPECT_EQ(opened.keys, nullptr);
        },
        [](const Platform& p) { EXPECT_FALSE(p.files.Exists(L"C:\\")); },
        [](const Platform& p) { EXPECT_FALSE(p.files.FullPath(L"C:\\")); },
        [&](const Platform& p) { p.files.Search(L"C:\\*.ini", foundNothing); },
        [](const Platform& p) { EXPECT_FALSE(p.files.MakeFolder(L"C:\\New")); },
        [](const Platform& p) { EXPECT_FALSE(p.files.ReadContent(L"C:\\a.ini")); },
        [](const Platform& p) { EXPECT_EQ(p.files.OpenForWriting(L"C:\\a.ini"), nullptr); },
        [](const Platform& p) { EXPECT_EQ(p.files.MakeFileLike(L"C:\\b.ini", L"C:\\a.ini"), nullptr); },
        [](const Platform& p) { EXPECT_FALSE(p.files.MoveOver(L"C:\\a.ini", L"C:\\b.ini")); },
        [](const Platform& p) { EXPECT_FALSE(p.files.MakeEmptyFile(L"C:\\a.ini")); },
        [](const Platform& p) { EXPECT_FALSE(p.files.RemoveFile(L"C:\\a.ini")); },
    };
    ExpectFailures(calls);
}

TEST(FaultyPlatformTest, LetsWhatShowsAndStartsFailAsItsContractAllows)
{
    const std::function<void(const Platform&)> calls[] = {
        [](const Platform& p) { EXPECT_FALSE(p.shell.EnterComponents()); },
        [](const Platform& p) { EXPECT_EQ(p.shell.SaveShortcut(L"C:\\a.lnk", {}), InjectedFailure); },
        [](const Platform& p) { p.shell.Explore(L"C:\\"); },
        [](const Platform& p) { p.shell.OpenProgram(L"C:\\a.exe", L"x"); },
        [](const Platform& p) { p.shell.Open(L"https://a.example/"); },
        [](const Platform& p) {
            std::wstring path = L"C:\\Old";
            p.folders.Choose(L"title", path);
            EXPECT_EQ(path, L"");
        },
        [](const Platform& p) {
            EXPECT_EQ(p.messages.Show(WindowId::None, L"text", std::nullopt, MessageStyle::Ok), Answer::None);
        },
        [](const Platform& p) { EXPECT_EQ(p.modules.Load(L"a.dll"), ModuleId::None); },
        [](const Platform& p) { p.help.ShowContents(WindowId::None, L"a.chm"); },
        [](const Platform& p) { p.help.ShowTopic(WindowId::None, L"a.chm::/b.htm"); },
        [](const Platform& p) { EXPECT_FALSE(p.processes.Start(L"C:\\a.exe", L"x")); },
        [](const Platform& p) { EXPECT_EQ(p.printer.Choose(WindowId::None), nullptr); },
    };
    ExpectFailures(calls);
}

TEST(FaultyPlatformTest, LetsWhatTellsSomethingFailAsItsContractAllows)
{
    const std::function<void(const Platform&)> calls[] = {
        [](const Platform& p) { EXPECT_FALSE(p.environment.Variable(L"Name")); },
        [](const Platform& p) { EXPECT_EQ(p.accounts.UserName(), L""); },
        [](const Platform& p) { EXPECT_TRUE(p.accounts.Servers().empty()); },
        [](const Platform& p) { EXPECT_TRUE(p.accounts.UsersOf(L"ZEUS", 0, 9).names.empty()); },
        [](const Platform& p) { EXPECT_FALSE(p.clock.ToLocal(0)); },
        [](const Platform& p) {
            EXPECT_FALSE(p.clock.FromLocal({2024, 5, 6, 7, 8, 9}));
        },
        [](const Platform& p) {
            EXPECT_FALSE(p.clock.Format(L"%Y", {2024, 5, 6, 7, 8, 9}));
        },
        [](const Platform& p) {
            std::string bytes;
            EXPECT_FALSE(p.codePage.Encode(L"x", bytes));
        },
        [](const Platform& p) { EXPECT_FALSE(p.clipboard.PutText(WindowId::None, L"new")); },
        [](const Platform& p) { EXPECT_FALSE(p.clipboard.Text(WindowId::None)); },
        [](const Platform& p) {
            p.web.ReadPage(L"https://a.example/", 50, [](std::string_view piece) {
                ADD_FAILURE() << piece;
                return true;
            });
        },
        [](const Platform& p) { EXPECT_TRUE(p.versions.ReadVersionBlock(L"C:\\a.exe").empty()); },
    };
    ExpectFailures(calls);
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
