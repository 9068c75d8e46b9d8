#include "contract/World.h"
#include "maindlg/VersionBlock.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

class VersionResourcesContract : public ::testing::Test
{
protected:
    std::unique_ptr<World> world = MakeWorld();
    VersionResources& versions = world->TheVersionResources();
};

TEST_F(VersionResourcesContract, ReadsABlockThatBeginsWithTheFixedInformation)
{
    const std::vector<std::byte> bytes = versions.ReadVersionBlock(world->FileWithVersion());
    const auto information = VersionBlock(bytes).Query(L"\\");
    ASSERT_TRUE(information);
    constexpr std::size_t Size = 52; // of VS_FIXEDFILEINFO, whose signature is 0xFEEF04BD (verrsrc.h)
    ASSERT_EQ(information->size(), Size);
    EXPECT_EQ((std::vector<std::byte>(information->begin(), information->begin() + 4)),
              (std::vector<std::byte>{std::byte{0xBD}, std::byte{0x04}, std::byte{0xEF}, std::byte{0xFE}}));
}

TEST_F(VersionResourcesContract, HasNothingForOtherFiles)
{
    const std::wstring scratch = world->ScratchFolder();
    world->MakeFile(scratch + L"empty.exe", "");
    world->MakeFile(scratch + L"text.exe", "just some text, long enough to be looked at for a header of any kind");
    for (const std::wstring& path :
         {scratch + L"empty.exe", scratch + L"text.exe", scratch + L"missing.exe", scratch, std::wstring()}) {
        EXPECT_TRUE(versions.ReadVersionBlock(path).empty()) << testing::PrintToString(path);
    }
}

} // namespace
} // namespace sitekeeper
