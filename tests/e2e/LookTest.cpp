// The menu as it lies in the file. (One that is open cannot be asked from outside under Wine; screens.sh takes its
// picture.)
#include "e2e/Journey.h"

#include <windows.h>

#include <array>
#include <vector>

namespace sitekeeper::e2e {
namespace {

class Look : public Journey
{};

struct MenuItem
{
    std::wstring text; // empty for a separator
    UINT command;

    bool operator==(const MenuItem&) const = default;
};

std::vector<MenuItem> ItemsOf(HMENU menu)
{
    std::vector<MenuItem> items;
    for (int index = 0; index < ::GetMenuItemCount(menu); ++index) {
        std::array<wchar_t, 128> text{};
        MENUITEMINFOW item{};
        item.cbSize = sizeof item;
        item.fMask = MIIM_STRING | MIIM_ID | MIIM_FTYPE;
        item.dwTypeData = text.data();
        item.cch = static_cast<UINT>(text.size());
        ::GetMenuItemInfoW(menu, static_cast<UINT>(index), TRUE, &item);
        const bool isSeparator = (item.fType & MFT_SEPARATOR) != 0;
        items.push_back(isSeparator ? MenuItem{L"", 0} : MenuItem{text.data(), item.wID});
    }
    return items;
}

} // namespace

TEST_F(Look, TheMenuOfTheShippedFileIsAsPublished)
{
    const HMODULE file = ::LoadLibraryExW(Installation::Program().c_str(), nullptr,
                                          LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE);
    const HMENU menu = ::LoadMenuW(file, MAKEINTRESOURCEW(133));
    ASSERT_NE(menu, nullptr);
    const std::vector<MenuItem> bar = ItemsOf(menu);
    ASSERT_EQ(bar.size(), 3U);
    EXPECT_EQ(bar[0].text, L"&File");
    EXPECT_EQ(bar[1].text, L"&Edit");
    EXPECT_EQ(bar[2].text, L"&Help");
    EXPECT_EQ(ItemsOf(::GetSubMenu(menu, 0)),
              (std::vector<MenuItem>{{L"&Print...", 57607}, {L"", 0}, {L"Exit", 32771}}));
    EXPECT_EQ(ItemsOf(::GetSubMenu(menu, 1)), (std::vector<MenuItem>{{L"&Add File Paths to Trusted Path", 32780},
                                                                     {L"&Install AutoCAD OEM", 32779},
                                                                     {L"", 0},
                                                                     {L"&Manage Shortcuts...", 32777}}));
    EXPECT_EQ(ItemsOf(::GetSubMenu(menu, 2)),
              (std::vector<MenuItem>{{L"Help...", 32772}, {L"About Site Keeper...", 32773}}));
    ::DestroyMenu(menu);
    ::FreeLibrary(file);
}

} // namespace sitekeeper::e2e
