#include "contract/World.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

class ModulesContract : public ::testing::Test
{
protected:
    std::unique_ptr<World> world = MakeWorld();
    Modules& modules = world->TheModules();
};

TEST_F(ModulesContract, LoadsByPathAndByBareName)
{
    for (const std::wstring& path : {world->LibraryPath(), world->LibraryName()}) {
        const ModuleId library = modules.Load(path);
        EXPECT_NE(library, ModuleId::None) << path;
        modules.Release(library);
    }
}

TEST_F(ModulesContract, GivesOneLibraryTheSameIdEachTime)
{
    const ModuleId first = modules.Load(world->LibraryPath());
    const ModuleId second = modules.Load(world->LibraryPath());
    EXPECT_NE(first, ModuleId::None);
    EXPECT_EQ(first, second);
    modules.Release(second);
    modules.Release(first);
}

TEST_F(ModulesContract, LoadsNothingWhereNoLibraryIs)
{
    const std::wstring scratch = world->ScratchFolder();
    EXPECT_EQ(modules.Load(scratch + L"missing.dll"), ModuleId::None);
    EXPECT_EQ(modules.Load(scratch + L"no folder\\missing.dll"), ModuleId::None);
    EXPECT_EQ(modules.Load(L"no library of this name.dll"), ModuleId::None);
    EXPECT_EQ(modules.Load(L""), ModuleId::None);
}

TEST_F(ModulesContract, LoadsNothingFromAFileThatIsNoLibrary)
{
    const std::wstring path = world->ScratchFolder() + L"text.dll";
    for (const std::string content :
         {"", "MZ", "just some text, long enough to be looked at for a header of any kind"}) {
        world->MakeFile(path, content);
        EXPECT_EQ(modules.Load(path), ModuleId::None) << content;
    }
}

TEST_F(ModulesContract, ReleasesNothingForNone)
{
    modules.Release(ModuleId::None);
    const ModuleId library = modules.Load(world->LibraryName());
    EXPECT_NE(library, ModuleId::None);
    modules.Release(library);
}

} // namespace
} // namespace sitekeeper
