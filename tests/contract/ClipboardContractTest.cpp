#include "contract/World.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

class ClipboardContract : public ::testing::Test
{
protected:
    [[nodiscard]] std::optional<std::wstring> Text() const { return clipboard.Text(world->Window()); }
    [[nodiscard]] bool Put(const std::wstring& text) { return clipboard.PutText(world->Window(), text); }

    std::unique_ptr<World> world = MakeWorld();
    Clipboard& clipboard = world->TheClipboard();
};

TEST_F(ClipboardContract, GivesTheTextThatWasPut)
{
    for (const std::wstring& text :
         {std::wstring(L"x"), std::wstring(L"first\r\nsecond\r\n"), std::wstring(L"\n\r \t"), std::wstring(),
          std::wstring(L"M\u00FCller \u0416 \u4E2D"), std::wstring(L"last")}) {
        EXPECT_TRUE(Put(text));
        EXPECT_EQ(Text(), text);
        EXPECT_EQ(Text(), text);
    }
}

TEST_F(ClipboardContract, TakesLongTexts)
{
    std::wstring text;
    while (text.size() < 500'000) {
        text += L"line " + std::to_wstring(text.size()) + L"\r\n";
    }
    EXPECT_TRUE(Put(text));
    EXPECT_TRUE(Text() == text);
}

TEST_F(ClipboardContract, EndsAtTheFirstZero)
{
    EXPECT_TRUE(Put(std::wstring(L"shown\0hidden", 12)));
    EXPECT_EQ(Text(), L"shown");
}

TEST_F(ClipboardContract, HasNothingWhereThereIsNoText)
{
    ASSERT_TRUE(Put(L"text"));
    world->EmptyClipboard();
    EXPECT_EQ(Text(), std::nullopt);
    ASSERT_TRUE(Put(L"text"));
    world->PutPictureOnClipboard();
    EXPECT_EQ(Text(), std::nullopt);
    EXPECT_TRUE(Put(L"text again"));
    EXPECT_EQ(Text(), L"text again");
}

TEST_F(ClipboardContract, WaitsInVainForAnotherProgram)
{
    ASSERT_TRUE(Put(L"text"));
    {
        const std::shared_ptr<void> held = world->HoldClipboard();
        EXPECT_FALSE(Put(L"other"));
        EXPECT_EQ(Text(), std::nullopt);
    }
    EXPECT_EQ(Text(), L"text");
    EXPECT_TRUE(Put(L"other"));
    EXPECT_EQ(Text(), L"other");
}

} // namespace
} // namespace sitekeeper
