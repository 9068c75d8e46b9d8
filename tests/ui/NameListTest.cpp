// The list of names beside a control that is left to sort and search by itself.
#include "access/NameList.h"

#include "support/UserAccessPage.h"

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <cwchar>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <random>

namespace sitekeeper {
namespace {

constexpr DWORD ListStyle = WS_CHILD | LVS_LIST | LVS_SHOWSELALWAYS | LVS_SORTASCENDING;

class NameListTest : public testing::Test
{
public:
    NameListTest(const NameListTest&) = delete;
    NameListTest& operator=(const NameListTest&) = delete;
    ~NameListTest() override { ::DestroyWindow(parent); }

protected:
    NameListTest()
    {
        ::InitCommonControls();
        list.SubclassWindow(control);
    }

    [[nodiscard]] HWND MakeControl() const
    {
        return ::CreateWindowExW(0, WC_LISTVIEWW, L"", ListStyle, 0, 0, 200, 200, parent, nullptr,
                                 ::GetModuleHandleW(nullptr), nullptr);
    }
    /// What the control itself does with a name.
    static void InsertByControl(HWND window, const std::wstring& name)
    {
        std::wstring text = name;
        LVITEMW item{};
        item.mask = LVIF_TEXT;
        item.iItem = static_cast<int>(::SendMessageW(window, LVM_GETITEMCOUNT, 0, 0));
        item.pszText = text.data();
        ::SendMessageW(window, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    }
    static std::optional<std::size_t> FindByControl(HWND window, const std::wstring& name)
    {
        LVFINDINFOW sought{};
        sought.flags = LVFI_STRING;
        sought.psz = name.c_str();
        const LRESULT place =
            ::SendMessageW(window, LVM_FINDITEMW, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&sought));
        return place < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(place));
    }
    static void SelectIn(HWND window, int place)
    {
        LVITEMW item{};
        item.state = LVIS_SELECTED;
        item.stateMask = LVIS_SELECTED;
        ::SendMessageW(window, LVM_SETITEMSTATE, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(&item));
    }

    HWND parent = ::CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 300, 300, nullptr, nullptr,
                                    ::GetModuleHandleW(nullptr), nullptr);
    HWND control = MakeControl();
    CNameList list;
};

const Names& SampleNames()
{
    static const Names Samples = {
        L"alice",  L"Bob",   L"ALICE2",       L"bob2",  L"M\u00FCller", L"Muller",      L"O'Brien",
        L"OBrien", L"co-op", L"coop",         L"a = b", L"[x]",         L"zoe.",        L"\u0418\u0432\u0430\u043D",
        L"10",     L"9",     L"_svc",         L"$corp", L"Straus",      L"Strau\u00DF", L"x y",
        L"xy",     L"X-Y",   L"\u4E2D\u6587",
    };
    return Samples;
}

TEST_F(NameListTest, TheFirstKeyInAMarkedListGoesToTheFirstName)
{
    list.Insert({L"alice", L"Bob"});
    for (const WPARAM key : {WPARAM{VK_HOME}, WPARAM{VK_DOWN}}) {
        list.SelectNone();
        ListView_SetItemState(control, -1, 0, LVIS_FOCUSED);
        ::SendMessageW(control, WM_SETFOCUS, 0, 0);
        ::SendMessageW(control, WM_KEYDOWN, key, 1);
        EXPECT_EQ(SelectedIn(control), Names{L"alice"}) << key;
    }
}

TEST_F(NameListTest, MarksANameWhereTheKeysGo)
{
    list.Insert({L"alice", L"Bob"});
    const auto marked = [this] { return ListView_GetNextItem(control, -1, LVNI_FOCUSED); };
    ASSERT_EQ(marked(), -1);
    ::SendMessageW(control, WM_SETFOCUS, 0, 0);
    EXPECT_EQ(marked(), 0);
    EXPECT_TRUE(list.Selected().empty()) << "seen, but not selected";

    ListView_SetItemState(control, 1, LVIS_FOCUSED, LVIS_FOCUSED);
    ::SendMessageW(control, WM_KILLFOCUS, 0, 0);
    ::SendMessageW(control, WM_SETFOCUS, 0, 0);
    EXPECT_EQ(marked(), 1) << "where it was";
}

TEST_F(NameListTest, ShowsNamesInTheOrderOfTheControlItself)
{
    const HWND other = MakeControl();
    for (const std::wstring& name : SampleNames()) {
        InsertByControl(other, name);
    }
    list.Insert(SampleNames());
    EXPECT_EQ(NamesIn(control), NamesIn(other));
    EXPECT_EQ(list.Names(), NamesIn(control));
}

TEST_F(NameListTest, PutsSingleNamesWhereManyAtOnceWouldStand)
{
    const HWND other = MakeControl();
    CNameList single;
    single.SubclassWindow(other);
    for (const std::wstring& name : SampleNames()) {
        single.Insert({name});
    }
    list.Insert(SampleNames());
    EXPECT_EQ(NamesIn(control), NamesIn(other));
}

TEST_F(NameListTest, FindsWhatTheControlsOwnSearchFinds)
{
    list.Insert(SampleNames());
    for (const std::wstring& name : SampleNames()) {
        for (const std::wstring& sought : {name, name + L"x", name.substr(1)}) {
            EXPECT_EQ(list.Find(sought), FindByControl(control, sought)) << testing::PrintToString(sought);
        }
    }
    EXPECT_EQ(list.Find(L"BOB"), list.Find(L"bob"));
    EXPECT_TRUE(list.Find(L"BOB"));
    EXPECT_FALSE(list.Find(L""));
}

TEST_F(NameListTest, KeepsTheSortingStyleAndTheSelection)
{
    list.Insert({L"b", L"d"});
    SelectIn(control, 1);
    list.Insert({L"a", L"c"});
    EXPECT_EQ(SelectedIn(control), (Names{L"d"}));
    EXPECT_EQ(static_cast<DWORD>(::GetWindowLongPtrW(control, GWL_STYLE)) & LVS_SORTASCENDING,
              DWORD{LVS_SORTASCENDING});
    list.Remove({0});
    EXPECT_EQ(SelectedIn(control), (Names{L"d"}));
    EXPECT_EQ(static_cast<DWORD>(::GetWindowLongPtrW(control, GWL_STYLE)) & LVS_SORTASCENDING,
              DWORD{LVS_SORTASCENDING});
}

TEST_F(NameListTest, InsertsOfEqualNamesTheFirstOnly)
{
    list.Insert({L"Bob"});
    list.InsertMissing({L"bob", L"Zoe", L"ZOE", L"amy", L"zoe"});
    EXPECT_EQ(NamesIn(control), (Names{L"amy", L"Bob", L"Zoe"}));
}

TEST_F(NameListTest, ReplacesAllNamesAndSelectsNone)
{
    list.Insert({L"a", L"b", L"B", L"d", L"e"});
    SelectIn(control, 0);
    list.Replace({L"e", L"f", L"B", L"a", L"c"});
    EXPECT_EQ(NamesIn(control), (Names{L"a", L"B", L"c", L"e", L"f"}));
    EXPECT_EQ(list.Names(), NamesIn(control));
    EXPECT_EQ(SelectedIn(control), Names());
    list.Replace({});
    EXPECT_EQ(NamesIn(control), Names());
}

TEST_F(NameListTest, TakesOverWhatOthersDoToTheControl)
{
    list.Insert({L"b", L"d"});
    InsertByControl(control, L"c");
    EXPECT_TRUE(list.Find(L"c"));
    ::SendMessageW(control, LVM_DELETEITEM, 0, 0);
    EXPECT_FALSE(list.Find(L"b"));
    EXPECT_EQ(list.Names(), (Names{L"c", L"d"}));
    ::SendMessageW(control, LVM_DELETEALLITEMS, 0, 0);
    EXPECT_EQ(list.Count(), 0U);
    list.InsertMissing({L"d"});
    EXPECT_EQ(NamesIn(control), (Names{L"d"}));
}

TEST_F(NameListTest, PutsInOrderWhatOthersLeftUnsorted)
{
    list.Insert({L"b", L"d"});
    ::SetWindowLongPtrW(control, GWL_STYLE, ::GetWindowLongPtrW(control, GWL_STYLE) & ~LVS_SORTASCENDING);
    InsertByControl(control, L"a");
    EXPECT_EQ(NamesIn(control), (Names{L"b", L"d", L"a"}));
    EXPECT_EQ(list.Names(), (Names{L"a", L"b", L"d"}));
    EXPECT_EQ(NamesIn(control), (Names{L"a", L"b", L"d"}));
}

TEST_F(NameListTest, KeepsNamesOfAnyLength)
{
    const std::wstring name(5000, L'n');
    list.Insert({name, L"a"});
    EXPECT_EQ(list.Names(), (Names{L"a", name}));
    InsertByControl(control, L"b"); // read back from the control
    EXPECT_EQ(list.Names(), (Names{L"a", L"b", name}));
    EXPECT_EQ(list.Find(name), 2U);
}

/// The rules on a plain vector, one name after the other.
class PlainList
{
public:
    [[nodiscard]] bool Holds(const std::wstring& name) const
    {
        return std::any_of(m_names.begin(), m_names.end(),
                           [&](const std::wstring& each) { return ::lstrcmpiW(each.c_str(), name.c_str()) == 0; });
    }
    void Insert(const std::wstring& name)
    {
        const auto behind = std::find_if(m_names.begin(), m_names.end(), [&](const std::wstring& each) {
            return ::lstrcmpiW(each.c_str(), name.c_str()) > 0;
        });
        m_names.insert(behind, name);
    }
    void InsertMissing(const Names& names)
    {
        for (const std::wstring& name : names) {
            if (!Holds(name)) {
                Insert(name);
            }
        }
    }
    void Remove(const std::vector<std::size_t>& places)
    {
        std::for_each(places.rbegin(), places.rend(), [this](std::size_t place) {
            m_names.erase(m_names.begin() + static_cast<std::ptrdiff_t>(place));
        });
    }
    Names m_names;
};

TEST_F(NameListTest, DoesAsAPlainListDoesInAnyOrderOfSteps)
{
    std::mt19937 random(20260501);
    const auto below = [&random](std::size_t end) { return random() % end; };
    PlainList plain;
    for (int step = 0; step < 600; ++step) {
        Names names;
        for (std::size_t count = below(6); count > 0; --count) {
            std::wstring name;
            for (std::size_t length = 1 + below(3); length > 0; --length) {
                name += L"abAB-'"[below(6)];
            }
            names.push_back(name);
        }
        switch (below(5)) {
        case 0:
            list.Insert(names);
            for (const std::wstring& name : names) {
                plain.Insert(name);
            }
            break;
        case 1:
            list.InsertMissing(names);
            plain.InsertMissing(names);
            break;
        case 2:
            names.insert(names.end(), plain.m_names.begin(),
                         plain.m_names.begin() + static_cast<std::ptrdiff_t>(plain.m_names.size() / 2));
            list.Replace(names);
            plain.m_names.clear();
            for (const std::wstring& name : names) {
                plain.Insert(name);
            }
            break;
        case 3: {
            std::vector<std::size_t> places;
            for (std::size_t place = 0; place < plain.m_names.size(); ++place) {
                if (below(4) == 0) {
                    places.push_back(place);
                }
            }
            list.Remove(places);
            plain.Remove(places);
            break;
        }
        default:
            for (const std::wstring& name : names) {
                EXPECT_EQ(list.Find(name).has_value(), plain.Holds(name)) << testing::PrintToString(name);
            }
        }
        ASSERT_EQ(NamesIn(control), plain.m_names) << "step " << step;
        ASSERT_EQ(list.Names(), plain.m_names) << "step " << step;
    }
}

TEST_F(NameListTest, ShowsAllAnewWhereThatIsQuicker)
{
    const HWND other = MakeControl();
    CNameList quick(10); // from ten moves on
    quick.SubclassWindow(other);
    Names even;
    Names odd;
    for (int number = 0; number < 100; ++number) {
        (number % 2 == 0 ? even : odd).push_back(L"user" + std::to_wstring(100 + number));
    }
    quick.Insert(even);
    SelectIn(other, 3);
    quick.InsertMissing(odd);
    EXPECT_EQ(quick.Count(), 100U);
    EXPECT_EQ(quick.Names(), NamesIn(other));
    EXPECT_EQ(quick.Find(L"USER106"), 6U);
    EXPECT_EQ(SelectedIn(other), (Names{L"user106"}));
    std::vector<std::size_t> places;
    for (std::size_t place = 1; place < 100; place += 2) {
        places.push_back(place);
    }
    quick.Remove(places);
    EXPECT_EQ(quick.Names(), even);
    EXPECT_EQ(NamesIn(other), even);
    EXPECT_EQ(quick.Find(L"user107"), std::nullopt);
}

} // namespace
} // namespace sitekeeper
