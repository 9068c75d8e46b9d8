// The access lists, with each allocation failing in turn: the file is the old or the new one, and nobody is let in who
// is not to be.
#include "access/AccessLists.h"
#include "access/SafeSave.h"
#include "AllocationFailures.h"
#include "PausingPlatform.h"

#include <optional>

namespace sitekeeper {
namespace {

using Names = std::vector<std::wstring>;

constexpr const wchar_t* ListPath = L"N:\\Data\\UserDatafile.ini";
constexpr const char* Before = "[SheetWriter]\nadam = adam\nbob = bob\n[User List]\nzoe = zoe\n";

struct ListsWorld
{
    ListsWorld()
    {
        settings.WriteFolder(SuiteFolder::Datafiles, L"N:\\Data\\");
        platform.memory.files.AddFile(ListPath, Before);
        platform.memory.accounts.AddServer(L"ZEUS", {L"a user with a longer name", L"zoe"});
        platform.memory.accounts.AddServer(L"", {L"carol"});
    }

    [[nodiscard]] std::string Content() const
    {
        return platform.memory.files.ContentOf(ListPath).value_or("(no file)");
    }
    [[nodiscard]] bool HasNeighbour() const { return platform.memory.files.Exists(NeighbourOf(ListPath)); }

    PausingPlatform platform;
    Platform ports = platform.Ports();
    InstallationSettings settings = platform.Settings();
    AccessLists lists{ports, settings, L"C:\\Suite\\SiteKeeper64.exe"};
    Names names{L"from before"};
    std::optional<Admission> admission;
};

int SweepFile(const std::function<void(ListsWorld&)>& operation)
{
    std::string after;
    {
        ListsWorld world;
        operation(world);
        after = world.Content();
    }
    EXPECT_NE(after, Before);
    return SweepAllocations<ListsWorld>(operation, [&after](ListsWorld& world, Ending ending) {
        // What ended with an error has changed nothing. A save that fails is silent.
        EXPECT_TRUE(world.Content() == Before || world.Content() == after) << world.Content();
        EXPECT_TRUE(ending == Ending::Done || world.Content() == Before) << world.Content();
        EXPECT_FALSE(world.HasNeighbour());
    });
}

int WriteAList()
{
    return SweepFile([](ListsWorld& world) {
        world.lists.WriteAccessList(AccessList::SheetWriter, {L"eve", L"another user with a long name", L"ren\u00E9"});
    });
}

int RebuildTheGeneralList()
{
    return SweepFile(
        [](ListsWorld& world) { world.lists.ReadAccessList(AccessList::General, world.names, Rebuild::Yes); });
}

int ReadAList()
{
    return SweepAllocations<ListsWorld>(
        [](ListsWorld& world) { world.lists.ReadAccessList(AccessList::SheetWriter, world.names, Rebuild::No); },
        [](ListsWorld& world, Ending ending) {
            EXPECT_TRUE(ending == Ending::Raised || world.names == (Names{L"adam", L"bob"}));
            EXPECT_EQ(world.Content(), Before);
        });
}

int TestAUser()
{
    return SweepAllocations<ListsWorld>(
        [](ListsWorld& world) { world.admission = world.lists.IsUserAllowed(L"mallory", AccessList::SheetWriter); },
        [](ListsWorld& world, Ending ending) {
            // An error is no admission.
            EXPECT_EQ(world.admission, ending == Ending::Done ? std::optional(Admission::Refused) : std::nullopt);
            EXPECT_EQ(world.Content(), Before);
        });
}

struct FilesWorld
{
    FilesWorld() { memory.AddFile(ListPath, Before); }

    MemoryFileSystem memory;
    PausingFiles files{memory};
    std::optional<bool> isSaved;
};

int SaveAFile()
{
    return SweepAllocations<FilesWorld>(
        [](FilesWorld& world) { world.isSaved = SaveContent(world.files, ListPath, "the new content"); },
        [](FilesWorld& world, Ending ending) {
            EXPECT_EQ(world.isSaved.has_value(), ending == Ending::Done);
            EXPECT_EQ(world.memory.ContentOf(ListPath), world.isSaved.value_or(false) ? "the new content" : Before);
            EXPECT_FALSE(world.memory.Exists(NeighbourOf(ListPath)));
        });
}

} // namespace

SweptOperations AccessListAllocations()
{
    return {{"write an access list", WriteAList},
            {"rebuild the general list", RebuildTheGeneralList},
            {"read an access list", ReadAList},
            {"test a user", TestAUser},
            {"save a file's content", SaveAFile}};
}

} // namespace sitekeeper
