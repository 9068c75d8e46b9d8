#include "app/HelpFile.h"

#include "support/MemoryPlatform.h"

#include <gtest/gtest.h>

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

class HelpContents : public ::testing::Test
{
protected:
    void Show() { ShowHelpContents(memory.files, memory.help, memory.messages, Owner, HelpFile); }

    static constexpr auto Owner = static_cast<WindowId>(0x1234);
    const std::wstring HelpFile = L"C:\\Suite\\Help\\SiteKeeper.chm";
    MemoryPlatform memory;
};

TEST_F(HelpContents, AreShownFromAnExistingFile)
{
    memory.files.AddFile(HelpFile);
    Show();
    EXPECT_EQ(memory.help.AllOpened(), (std::vector<MemoryHelpViewer::Opened>{{Owner, HelpFile}}));
    EXPECT_TRUE(memory.messages.Shown().empty());
}

TEST_F(HelpContents, OfAMissingFileAreAMessageWithoutOwner)
{
    memory.messages.Expect();
    Show();
    EXPECT_EQ(memory.messages.Shown(),
              (std::vector<ScriptedMessageBoxes::Box>{{WindowId::None,
                                                       L"Couldn't find help file: \nC:\\Suite\\Help\\SiteKeeper.chm\n\n"
                                                       L"Please check software installation.",
                                                       std::nullopt, MessageStyle::Error}}));
    EXPECT_TRUE(memory.help.AllOpened().empty());
}

} // namespace
} // namespace sitekeeper
