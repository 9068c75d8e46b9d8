// The access lists in their file: what is read, written and admitted. Failing calls are in
// failure/AccessListFailures.cpp.
#include "access/AccessLists.h"

#include "support/MemoryPlatform.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

constexpr const wchar_t* Folder = L"N:\\Suite\\Datafiles\\";
constexpr const wchar_t* File = L"N:\\Suite\\Datafiles\\UserDatafile.ini";

/// Not as a save would lay it out.
constexpr const char* Unsorted = "[SiteKeeper]\nbob = bob\nalice = alice\n; a comment\n[Ledger Composer]\nx = y\n";

class AccessListsTest : public ::testing::Test
{
protected:
    AccessListsTest()
    {
        memory.files.AddFolder(Folder);
        SettingsOn(memory.Ports()).WriteFolder(SuiteFolder::Datafiles, Folder);
    }

    [[nodiscard]] std::vector<std::wstring> Read(AccessList list, Rebuild rebuild = Rebuild::No) const
    {
        std::vector<std::wstring> names{L"from before"};
        lists.ReadAccessList(list, names, rebuild);
        return names;
    }
    [[nodiscard]] std::string Content() const { return memory.files.ContentOf(File).value_or("(no file)"); }
    void Put(const std::string& content) { memory.files.AddFile(File, content); }

    MemoryPlatform memory;
    Platform ports = memory.Ports();
    InstallationSettings settings = SettingsOn(ports);
    AccessLists lists{ports, settings, L"C:\\Suite\\SiteKeeper64.exe"};
};

using Names = std::vector<std::wstring>;

TEST_F(AccessListsTest, WritesAListSortedAndReadsItBack)
{
    lists.WriteAccessList(AccessList::SheetWriter, {L"carol", L"alice"});
    EXPECT_EQ(Content(), "[SheetWriter]\r\nalice = alice\r\ncarol = carol\r\n");
    EXPECT_EQ(Read(AccessList::SheetWriter), (Names{L"alice", L"carol"}));
    lists.WriteAccessList(AccessList::SheetWriter, {});
    EXPECT_EQ(Content(), "");
}

TEST_F(AccessListsTest, ReadsTheSeedsValueWhereNoAccountReplacesIt)
{
    memory.accounts.AddServer(L"", {L"root"});
    EXPECT_EQ(Read(AccessList::General, Rebuild::Yes), (Names{L"1", L"root"}));
    EXPECT_EQ(Content(), "[User List]\r\nAdministrator = 1\r\nroot = root\r\n");
}

TEST_F(AccessListsTest, AdmitsByTheList)
{
    EXPECT_EQ(lists.IsUserAllowed(L"alice", AccessList::SiteKeeper), Admission::Granted);
    lists.WriteAccessList(AccessList::SiteKeeper, {L"bob"});
    EXPECT_EQ(lists.IsUserAllowed(L"alice", AccessList::SiteKeeper), Admission::Refused);
    EXPECT_EQ(lists.IsUserAllowed(L"BOB", AccessList::SiteKeeper), Admission::Granted);
    EXPECT_EQ(lists.IsUserAllowed(L"aDMINISTRATOR", AccessList::SiteKeeper), Admission::Granted);
    EXPECT_EQ(lists.IsUserAllowed(L"", AccessList::SheetWriter), Admission::Refused);
}

TEST_F(AccessListsTest, KeepsEachListInTheSectionOfItsTool)
{
    constexpr std::pair<AccessList, const char*> Sections[] = {
        {AccessList::General, "[User List]\r\n"},      {AccessList::LedgerComposer, "[Ledger Composer]\r\n"},
        {AccessList::SiteKeeper, "[SiteKeeper]\r\n"},  {AccessList::SheetWriter, "[SheetWriter]\r\n"},
        {AccessList::NormKeeper, "[Norm Keeper]\r\n"},
    };
    for (const auto& [list, section] : Sections) {
        memory.files.Remove(File);
        lists.WriteAccessList(list, {L"bob"});
        EXPECT_EQ(Content(), std::string(section) + "bob = bob\r\n");
        EXPECT_EQ(Read(list), Names{L"bob"});
    }
}

TEST_F(AccessListsTest, KeepsTheOtherSectionsWhenItWritesOne)
{
    Put(Unsorted);
    lists.WriteAccessList(AccessList::SheetWriter, {L"eve"});
    EXPECT_EQ(Content(), "[Ledger Composer]\r\nx = y\r\n\r\n[SheetWriter]\r\neve = eve\r\n\r\n"
                         "[SiteKeeper]\r\nalice = alice\r\nbob = bob\r\n");
    lists.WriteAccessList(AccessList::SiteKeeper, {});
    EXPECT_EQ(Content(), "[Ledger Composer]\r\nx = y\r\n\r\n[SheetWriter]\r\neve = eve\r\n");
}

TEST_F(AccessListsTest, ReadsValuesInTheFilesOrderAndRewritesNothing)
{
    Put(Unsorted);
    EXPECT_EQ(Read(AccessList::SiteKeeper), (Names{L"bob", L"alice"}));
    EXPECT_EQ(Read(AccessList::LedgerComposer), Names{L"y"}); // the value, not the key
    EXPECT_EQ(Read(AccessList::SheetWriter), Names{});
    EXPECT_EQ(Content(), Unsorted);
}

TEST_F(AccessListsTest, LeavesTheFileAloneForToolsWithoutAList)
{
    const std::string content = std::string(Unsorted) + "[User List]\nq = q\n[]\nr = r\n";
    Put(content);
    for (const int number : {-1, 1, 2, 3, 4, 6, 12, 1000}) {
        SCOPED_TRACE(number);
        EXPECT_EQ(Read(static_cast<AccessList>(number)), Names{});
        EXPECT_EQ(Read(static_cast<AccessList>(number), Rebuild::Yes), Names{});
        lists.WriteAccessList(static_cast<AccessList>(number), {L"eve"});
        EXPECT_EQ(Content(), content);
        EXPECT_EQ(lists.IsUserAllowed(L"eve", static_cast<AccessList>(number)), Admission::Granted);
    }
}

TEST_F(AccessListsTest, ReadsButDoesNotWriteTheListsOfTheLastTwoTools)
{
    const std::string content = "[Record Desk]\nb = b\na = a\n[AutoCAD]\nc = c\n";
    Put(content);
    EXPECT_EQ(Read(AccessList::RecordDesk), (Names{L"b", L"a"}));
    EXPECT_EQ(Read(AccessList::AutoCad), Names{L"c"});
    lists.WriteAccessList(AccessList::RecordDesk, {L"eve"});
    lists.WriteAccessList(AccessList::AutoCad, {});
    EXPECT_EQ(Content(), content);
}

TEST_F(AccessListsTest, RebuildsTheGeneralListAndNoOther)
{
    Put(Unsorted);
    memory.accounts.AddServer(L"", {L"root"});
    EXPECT_EQ(Read(AccessList::SiteKeeper, Rebuild::Yes), (Names{L"bob", L"alice"}));
    EXPECT_EQ(Content(), Unsorted);
    EXPECT_TRUE(memory.accounts.Requests().empty());
    EXPECT_EQ(Read(AccessList::General), Names{});
    EXPECT_TRUE(memory.accounts.Requests().empty());
}

TEST_F(AccessListsTest, CollectsTheGeneralListAnew)
{
    Put("[User List]\ngone = gone\nAdministrator = x\n[SiteKeeper]\nkept = kept\n");
    memory.accounts.AddServer(L"ZEUS", {L"zoe", L"adam", L""});
    memory.accounts.AddServer(L"ARES", {L"adam", L"Zoe"});
    memory.accounts.AddServer(L"", {L"adam"});
    EXPECT_EQ(Read(AccessList::General, Rebuild::Yes), (Names{L"1", L"zoe", L"adam", L"Zoe"}));
    EXPECT_EQ(Content(), "[SiteKeeper]\r\nkept = kept\r\n\r\n"
                         "[User List]\r\nAdministrator = 1\r\nZoe = Zoe\r\nadam = adam\r\nzoe = zoe\r\n");
    EXPECT_EQ(Read(AccessList::General), (Names{L"1", L"Zoe", L"adam", L"zoe"}));
}

TEST_F(AccessListsTest, ReplacesTheSeedByAnAccountOfThatName)
{
    memory.accounts.AddServer(L"ARES", {L"bob"});
    memory.accounts.AddServer(L"", {L"alice", L"Administrator"});
    EXPECT_EQ(Read(AccessList::General, Rebuild::Yes), (Names{L"Administrator", L"bob", L"alice"}));
    EXPECT_EQ(Content(), "[User List]\r\nAdministrator = Administrator\r\nalice = alice\r\nbob = bob\r\n");
}

TEST_F(AccessListsTest, HoldsTheSeedAtLeast)
{
    EXPECT_EQ(Read(AccessList::General, Rebuild::Yes), Names{L"1"}); // even this computer refuses
    EXPECT_EQ(Content(), "[User List]\r\nAdministrator = 1\r\n");
}

TEST_F(AccessListsTest, StripsAndJoinsNamesAsTheStoreDoes)
{
    lists.WriteAccessList(AccessList::SiteKeeper, {L"bob", L"[bob]", L"", L" eve", L"bob"});
    EXPECT_EQ(Content(), "[SiteKeeper]\r\n eve =  eve\r\nbob = bob\r\n");
}

TEST_F(AccessListsTest, DoesNothingWithoutADataFilesFolder)
{
    for (const bool isEmpty : {false, true}) {
        MemoryPlatform bare;
        bare.accounts.AddServer(L"", {L"root"});
        const Platform barePorts = bare.Ports();
        InstallationSettings bareSettings = SettingsOn(barePorts);
        if (isEmpty) {
            bareSettings.WriteFolder(SuiteFolder::Datafiles, L"");
        }
        const AccessLists bareLists(barePorts, bareSettings, L"C:\\Suite\\SiteKeeper64.exe");
        const State before = bare.CurrentState();
        Names names{L"from before"};
        bareLists.ReadAccessList(AccessList::General, names, Rebuild::Yes);
        EXPECT_EQ(names, Names{});
        EXPECT_TRUE(bare.accounts.Requests().empty());
        bareLists.WriteAccessList(AccessList::SiteKeeper, {L"bob"});
        EXPECT_EQ(bareLists.IsUserAllowed(L"eve", AccessList::SiteKeeper), Admission::Granted);
        EXPECT_EQ(bareLists.IsUserAllowed(L"", AccessList::SiteKeeper), Admission::Refused);
        EXPECT_EQ(bare.CurrentState(), before);
    }
}

TEST_F(AccessListsTest, AddsTheBackslashThatTheFolderLacks)
{
    settings.WriteFolder(SuiteFolder::Datafiles, L"N:\\Suite\\Datafiles");
    lists.WriteAccessList(AccessList::SiteKeeper, {L"bob"});
    EXPECT_EQ(Content(), "[SiteKeeper]\r\nbob = bob\r\n");
}

TEST_F(AccessListsTest, TakesAFileThatCannotBeReadAsEmpty)
{
    Put(Unsorted);
    memory.files.RefuseReading(File);
    EXPECT_EQ(Read(AccessList::SiteKeeper), Names{});
    EXPECT_EQ(lists.IsUserAllowed(L"eve", AccessList::SiteKeeper), Admission::Granted);
    EXPECT_EQ(Content(), Unsorted);
}

TEST_F(AccessListsTest, PutsNoListInThePlaceOfAFileThatCannotBeRead)
{
    Put(Unsorted);
    memory.files.RefuseReading(File);
    lists.WriteAccessList(AccessList::SheetWriter, {L"eve"});
    lists.WriteAccessList(AccessList::SiteKeeper, {});
    EXPECT_EQ(Content(), Unsorted);
}

TEST_F(AccessListsTest, LosesSilentlyWhatCannotBeWritten)
{
    Put(Unsorted);
    memory.files.RefuseWriting(File);
    memory.accounts.AddServer(L"", {L"root"});
    lists.WriteAccessList(AccessList::SiteKeeper, {L"eve"});
    EXPECT_EQ(Content(), Unsorted);
    EXPECT_EQ(Read(AccessList::General, Rebuild::Yes), (Names{L"1", L"root"}));
    EXPECT_EQ(Content(), Unsorted);
    EXPECT_EQ(Read(AccessList::General), Names{});
}

TEST_F(AccessListsTest, WritesNoListThatNamesAUserTheCodePageDoesNotHave)
{
    Put(Unsorted);
    lists.WriteAccessList(AccessList::SiteKeeper, {L"eve", std::wstring(1, wchar_t{0xD800})});
    EXPECT_EQ(Content(), Unsorted);
}

TEST_F(AccessListsTest, HoldsAHundredThousandNames)
{
    constexpr std::size_t Count = 100'000;
    Names names(Count);
    std::size_t number = Count;
    std::generate(names.begin(), names.end(), [&number] { return L"user" + std::to_wstring(Count + --number); });
    lists.WriteAccessList(AccessList::SiteKeeper, names);
    std::reverse(names.begin(), names.end());
    EXPECT_TRUE(Read(AccessList::SiteKeeper) == names); // not printed: too many
    EXPECT_EQ(lists.IsUserAllowed(L"USER150000", AccessList::SiteKeeper), Admission::Granted);
    EXPECT_EQ(lists.IsUserAllowed(L"user250000", AccessList::SiteKeeper), Admission::Refused);
}

} // namespace
} // namespace sitekeeper
