#include "app/HelpFile.h"

#include "support/MemoryPlatform.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

namespace sitekeeper {
namespace {

TEST(FormHelpFilePath, NamesOneFileForBothPrograms)
{
    const struct
    {
        const wchar_t* program;
        const wchar_t* name;
    } rows[] = {
        {L"C:\\Suite\\Tools\\SiteKeeper64.chm", L"SiteKeeper.chm"},
        {L"C:\\Suite\\Tools\\SiteKeeper32.hlp", L"SiteKeeper.chm"},
        {L"C:\\Suite\\Tools\\SiteKeeper.chm", L"SiteKeeper.chm"},
        {L"C:\\Suite\\Tools\\SiteKeeper23.chm", L"SiteKeeper23.chm"},
        {L"C:\\Suite\\Tools\\SiteKeeper6432.chm", L"SiteKeeper64.chm"},
        {L"C:\\Suite\\Tools\\SiteKeeper64", L"SiteKeeper.chm"},
        {L"C:\\Suite.64\\SiteKeeper", L"SiteKeeper.chm"},
        {L"C:\\Suite\\Site.Keeper64.chm", L"Site.Keeper.chm"},
        {L"SiteKeeper64.chm", L"SiteKeeper.chm"},
        {L"C:\\Suite\\64.chm", L".chm"},
        {L"C:\\Suite\\4.chm", L"4.chm"},
        {L"C:\\Suite\\SiteKeeper64.", L"SiteKeeper.chm"},
        {L"C:\\Suite\\", L".chm"},
        {L"", L".chm"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(FormHelpFilePath(row.program, L""), row.name) << row.program;
        EXPECT_EQ(FormHelpFilePath(row.program, L"C:\\Suite\\"), std::wstring(L"C:\\Suite\\Help\\") + row.name);
    }
}

using Opened = MemoryHelpViewer::Opened;
using Box = ScriptedMessageBoxes::Box;

class ShowHelpTest : public ::testing::TestWithParam<HelpPage>
{
protected:
    void Show(const std::optional<std::wstring>& caption = std::nullopt)
    {
        ShowHelp(memory.Ports(), {ViewerOwner, MessageOwner, caption}, GetParam(), HelpFile);
    }
    [[nodiscard]] Opened ExpectedPage() const
    {
        return GetParam() == HelpPage::Contents ? Opened{ViewerOwner, HelpFile, false}
                                                : Opened{ViewerOwner, HelpFile + L"::/Introduction.htm", true};
    }

    static constexpr auto ViewerOwner = static_cast<WindowId>(0x1234);
    static constexpr auto MessageOwner = static_cast<WindowId>(0x5678);
    const std::wstring HelpFile = L"C:\\Suite\\Help\\SiteKeeper.chm";
    MemoryPlatform memory;
};

TEST_P(ShowHelpTest, OpensThePageOfAnExistingFile)
{
    memory.files.AddFile(HelpFile);
    Show();
    EXPECT_EQ(memory.help.AllOpened(), (std::vector<Opened>{ExpectedPage()}));
    EXPECT_TRUE(memory.messages.Shown().empty());
}

TEST_P(ShowHelpTest, HandsAFolderOfThatNameToTheViewer)
{
    memory.files.AddFolder(HelpFile);
    Show();
    EXPECT_EQ(memory.help.AllOpened(), (std::vector<Opened>{ExpectedPage()}));
    EXPECT_TRUE(memory.messages.Shown().empty());
}

TEST_P(ShowHelpTest, SaysThatTheFileIsMissing)
{
    const std::optional<std::wstring> captions[] = {std::nullopt, L"SiteKeeper"};
    for (const auto& caption : captions) {
        memory.messages.Expect();
        Show(caption);
        EXPECT_EQ(memory.messages.Shown().back(), (Box{MessageOwner,
                                                       L"Couldn't find help file: \nC:\\Suite\\Help\\SiteKeeper.chm\n\n"
                                                       L"Please check software installation.",
                                                       caption, MessageStyle::Error}));
    }
    EXPECT_EQ(memory.messages.Shown().size(), 2U) << "each time it is asked for";
    EXPECT_TRUE(memory.help.AllOpened().empty());
}

INSTANTIATE_TEST_SUITE_P(On, ShowHelpTest, ::testing::Values(HelpPage::Contents, HelpPage::Introduction),
                         [](const auto& page) {
                             return std::string(page.param == HelpPage::Contents ? "Contents" : "Introduction");
                         });

} // namespace
} // namespace sitekeeper
