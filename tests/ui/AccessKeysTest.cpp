// The keys that are underlined: within a menu, and within a dialog, each leads to one place.
#include "res/UiTestIds.h"
#include "support/MainDialogFixture.h"
#include "support/TemplateReader.h"

#include <windows.h>

#include <cwctype>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

namespace sitekeeper {
namespace {

/// The letter behind the single "&" of a text; 0 when there is none.
wchar_t AccessKey(const std::wstring& text)
{
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] != L'&') {
            continue;
        }
        if (text[i + 1] != L'&') {
            return static_cast<wchar_t>(std::towupper(static_cast<std::wint_t>(text[i + 1])));
        }
        ++i;
    }
    return L'\0';
}

/// The keys that several of the texts have.
std::wstring SharedKeys(const std::vector<std::wstring>& texts)
{
    std::map<wchar_t, int> count;
    for (const std::wstring& text : texts) {
        ++count[AccessKey(text)];
    }
    std::wstring shared;
    for (const auto& [key, times] : count) {
        if (key != L'\0' && times > 1) {
            shared += key;
        }
    }
    return shared;
}

void ExpectUniqueKeys(HMENU menu, const std::wstring& name)
{
    std::vector<std::wstring> texts;
    for (int position = 0; position < ::GetMenuItemCount(menu); ++position) {
        std::wstring text(128, L'\0');
        const int length = ::GetMenuStringW(menu, static_cast<UINT>(position), text.data(),
                                            static_cast<int>(text.size()), MF_BYPOSITION);
        text.resize(static_cast<std::size_t>(length));
        texts.push_back(text);
        if (const HMENU below = ::GetSubMenu(menu, position); below != nullptr) {
            EXPECT_NE(AccessKey(text), L'\0') << "a menu that no key opens";
            ExpectUniqueKeys(below, text);
        }
    }
    EXPECT_EQ(SharedKeys(texts), L"") << name;
}

class AccessKeysTest : public MainDialogTest
{};

TEST_F(AccessKeysTest, AreFoundInTexts)
{
    EXPECT_EQ(AccessKey(L"&File"), L'F');
    EXPECT_EQ(AccessKey(L"Save && E&xit"), L'X');
    EXPECT_EQ(AccessKey(L"Exit"), L'\0');
    EXPECT_EQ(AccessKey(L"odd&"), L'\0');
    EXPECT_EQ(SharedKeys({L"&One", L"tw&o", L"&three", L"plain", L"also plain"}), L"O");
}

TEST_F(AccessKeysTest, AreUniqueInEveryMenu)
{
    Run({Do("look", [](const MainDialogPage& page) { ExpectUniqueKeys(::GetMenu(page.Window()), L"the menu bar"); }),
         Press(IDCANCEL)});
}

TEST_F(AccessKeysTest, AreUniqueInEveryDialog)
{
    const std::vector<UINT> dialogs = DialogNumbers(m_app.Instance());
    ASSERT_THAT(dialogs, testing::Contains(102U));
    for (const UINT id : dialogs) {
        if (id == IDD_TEST_BUTTONS || id == IDD_TEST_CONTROLS) {
            continue;
        }
        std::vector<std::wstring> texts;
        for (const TemplateItem& item : ReadTemplate(m_app.ResourceBytes(RT_DIALOG, id)).items) {
            texts.push_back(item.text);
        }
        EXPECT_EQ(SharedKeys(texts), L"") << id;
    }
}

} // namespace
} // namespace sitekeeper
