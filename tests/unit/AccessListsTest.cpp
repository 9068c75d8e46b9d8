#include "access/AccessLists.h"

#include "support/MemoryPlatform.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

constexpr const wchar_t* Folder = L"N:\\Suite\\Datafiles\\";

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
    [[nodiscard]] std::string Content() const
    {
        return memory.files.ContentOf(std::wstring(Folder) + L"UserDatafile.ini").value_or("(no file)");
    }

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

} // namespace
} // namespace sitekeeper
