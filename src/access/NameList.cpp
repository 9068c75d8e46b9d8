#include "access/NameList.h"

#include <commctrl.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace sitekeeper {
namespace {

// As the control takes and gives them.
constexpr int NoItem = -1;
constexpr int AllItems = -1;

/// The text of an item, of any length.
std::wstring ItemText(HWND list, int place)
{
    std::wstring text(64, L'\0');
    for (;;) {
        LVITEMW item{};
        item.pszText = text.data();
        item.cchTextMax = static_cast<int>(text.size());
        const auto length = static_cast<std::size_t>(
            ::SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(&item)));
        if (length + 1 < text.size()) {
            text.resize(length);
            return text;
        }
        text.resize(text.size() * 2);
    }
}

void SetItemState(HWND list, int place, UINT state, UINT mask)
{
    LVITEMW item{};
    item.state = state;
    item.stateMask = mask;
    ::SendMessageW(list, LVM_SETITEMSTATE, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(&item));
}

bool ChangesItems(UINT message)
{
    switch (message) {
    case LVM_INSERTITEMA:
    case LVM_INSERTITEMW:
    case LVM_DELETEITEM:
    case LVM_DELETEALLITEMS:
    case LVM_SETITEMA:
    case LVM_SETITEMW:
    case LVM_SETITEMTEXTA:
    case LVM_SETITEMTEXTW:
    case LVM_SORTITEMS:
    case LVM_SORTITEMSEX: return true;
    default: return false;
    }
}

} // namespace

/// Several changes of the control as one: without its own sorting, and drawn once at the end. Until it is finished,
/// what the control shows and what stands beside it differ; should it break off, the control counts.
class CNameList::Change
{
public:
    explicit Change(CNameList& list)
        : m_list(list), m_pause(list), m_style(::GetWindowLongPtrW(list.Handle(), GWL_STYLE))
    {
        m_list.m_isStale = true;
        ::SendMessageW(m_list.Handle(), WM_SETREDRAW, FALSE, 0);
        SetSorting(0);
    }
    Change(const Change&) = delete;
    Change& operator=(const Change&) = delete;
    ~Change()
    {
        SetSorting(m_style & LVS_SORTASCENDING);
        ::SendMessageW(m_list.Handle(), WM_SETREDRAW, TRUE, 0);
        ::InvalidateRect(m_list.Handle(), nullptr, TRUE);
    }

    /// The control shows `items` now.
    void Finish(std::vector<Item> items) noexcept
    {
        m_list.m_items = std::move(items);
        m_list.m_isStale = false;
    }

private:
    void SetSorting(LONG_PTR sorting)
    {
        const LONG_PTR style = ::GetWindowLongPtrW(m_list.Handle(), GWL_STYLE);
        ::SetWindowLongPtrW(m_list.Handle(), GWL_STYLE, (style & ~static_cast<LONG_PTR>(LVS_SORTASCENDING)) | sorting);
    }

    CNameList& m_list;
    SubclassPause m_pause; // what happens here is known already
    LONG_PTR m_style;
};

std::size_t CNameList::Count()
{
    TakeOver();
    return m_items.size();
}

std::vector<std::wstring> CNameList::Names()
{
    TakeOver();
    std::vector<std::wstring> names;
    names.reserve(m_items.size());
    for (const Item& item : m_items) {
        names.push_back(item.name);
    }
    return names;
}

std::optional<std::size_t> CNameList::Find(const std::wstring& name)
{
    TakeOver();
    const std::string key = ItemFor(name).key;
    const auto found = std::lower_bound(m_items.begin(), m_items.end(), key,
                                        [](const Item& item, const std::string& sought) { return item.key < sought; });
    return found == m_items.end() || found->key != key ? std::nullopt
                                                       : std::optional<std::size_t>(found - m_items.begin());
}

void CNameList::Insert(const std::vector<std::wstring>& names)
{
    TakeOver();
    Add(SortedItems(names));
}

void CNameList::InsertMissing(const std::vector<std::wstring>& names)
{
    TakeOver();
    std::vector<Item> items = SortedItems(names);
    items.erase(std::unique(items.begin(), items.end(),
                            [](const Item& left, const Item& right) { return left.key == right.key; }),
                items.end());
    auto shown = m_items.begin();
    std::erase_if(items, [this, &shown](const Item& item) {
        shown = std::lower_bound(shown, m_items.end(), item.key,
                                 [](const Item& each, const std::string& key) { return each.key < key; });
        return shown != m_items.end() && shown->key == item.key;
    });
    Add(std::move(items));
}

void CNameList::Remove(const std::vector<std::size_t>& places)
{
    TakeOver();
    if (places.empty()) {
        return;
    }
    const bool isMany = places.size() > m_manyMoves / m_items.size();
    std::vector<bool> isRemoved(m_items.size(), false);
    for (const std::size_t place : places) {
        isRemoved[place] = true;
    }
    std::vector<Item> left;
    left.reserve(m_items.size() - places.size());
    for (std::size_t place = 0; place < m_items.size(); ++place) {
        if (!isRemoved[place]) {
            left.push_back(std::move(m_items[place]));
        }
    }
    if (isMany) {
        Refill(std::move(left), {});
        return;
    }
    Change change(*this);
    std::for_each(places.rbegin(), places.rend(),
                  [this](std::size_t place) { ::SendMessageW(Handle(), LVM_DELETEITEM, place, 0); });
    change.Finish(std::move(left));
}

void CNameList::Replace(const std::vector<std::wstring>& names)
{
    TakeOver();
    std::vector<Item> wanted = SortedItems(names);
    std::vector<Item> missing;
    std::vector<std::size_t> leaving;
    const auto lacksKey = [](const std::string& key) { return [&key](const Item& item) { return item.key != key; }; };
    auto shown = m_items.begin();
    const auto leave = [&](auto end) {
        for (; shown != end; ++shown) {
            leaving.push_back(static_cast<std::size_t>(shown - m_items.begin()));
        }
    };
    // Names that compare equal stay together or not at all, or they might change places.
    for (auto begin = wanted.begin(); begin != wanted.end();) {
        const std::string key = begin->key;
        const auto end = std::find_if(begin, wanted.end(), lacksKey(key));
        leave(std::find_if(shown, m_items.end(), [&key](const Item& item) { return item.key >= key; }));
        const auto shownEnd = std::find_if(shown, m_items.end(), lacksKey(key));
        if (std::equal(begin, end, shown, shownEnd,
                       [](const Item& left, const Item& right) { return left.name == right.name; })) {
            shown = shownEnd;
        } else {
            leave(shownEnd);
            missing.insert(missing.end(), std::make_move_iterator(begin), std::make_move_iterator(end));
        }
        begin = end;
    }
    leave(m_items.end());
    Remove(leaving);
    Add(std::move(missing));
    SelectNone();
}

std::vector<std::size_t> CNameList::Selected() const
{
    const SubclassPause pause(*this);
    std::vector<std::size_t> places;
    LRESULT place = NoItem;
    while ((place = ::SendMessageW(Handle(), LVM_GETNEXTITEM, static_cast<WPARAM>(place), LVNI_SELECTED)) >= 0) {
        places.push_back(static_cast<std::size_t>(place));
    }
    return places;
}

std::vector<std::wstring> CNameList::NamesAt(const std::vector<std::size_t>& places)
{
    TakeOver();
    std::vector<std::wstring> names;
    names.reserve(places.size());
    for (const std::size_t place : places) {
        names.push_back(m_items[place].name);
    }
    return names;
}

void CNameList::SelectAll()
{
    SetItemState(Handle(), AllItems, LVIS_SELECTED, LVIS_SELECTED);
}

void CNameList::SelectNone()
{
    SetItemState(Handle(), AllItems, 0, LVIS_SELECTED);
}

void CNameList::SelectOnly(std::size_t place)
{
    if (Count() == 0) {
        return;
    }
    const auto last = static_cast<int>(m_items.size() - 1);
    const int chosen = std::min(static_cast<int>(place), last);
    SelectNone();
    SetItemState(Handle(), chosen, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    ::SendMessageW(Handle(), LVM_ENSUREVISIBLE, static_cast<WPARAM>(chosen), FALSE);
}

LRESULT CNameList::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_CHAR && wParam < L' ') {
        return 0; // the control would look for a name that begins with it
    }
    if (ChangesItems(message)) {
        m_isStale = true;
    }
    if (message == WM_KEYDOWN && wParam >= VK_PRIOR && wParam <= VK_DOWN) {
        HideMark(); // the first key that moves goes to the first name, not on from it
    }
    const LRESULT result = CWnd::WindowProc(message, wParam, lParam);
    if (message == WM_SETFOCUS) {
        ShowMark();
    }
    return result;
}

void CNameList::ShowMark()
{
    if (ListView_GetNextItem(Handle(), NoItem, LVNI_FOCUSED) == NoItem) {
        ListView_SetItemState(Handle(), 0, LVIS_FOCUSED, LVIS_FOCUSED);
        m_isMarked = true;
    }
}

void CNameList::HideMark()
{
    if (std::exchange(m_isMarked, false) && ListView_GetNextItem(Handle(), NoItem, LVNI_SELECTED) == NoItem) {
        ListView_SetItemState(Handle(), AllItems, 0, LVIS_FOCUSED);
    }
}

CNameList::Item CNameList::ItemFor(const std::wstring& name)
{
    // The comparison of lstrcmpiW, which the control uses; there is no key for an empty text.
    constexpr DWORD Flags = LCMAP_SORTKEY | NORM_IGNORECASE;
    Item item{name, {}};
    const auto length = static_cast<int>(name.size());
    const auto map = [&](char* room, int size) {
        return ::LCMapStringEx(LOCALE_NAME_USER_DEFAULT, Flags, name.data(), length, reinterpret_cast<wchar_t*>(room),
                               size, nullptr, nullptr, 0);
    };
    if (length > 0) {
        char room[256];
        int size = map(room, static_cast<int>(std::size(room)));
        if (size > 0) {
            item.key.assign(room, static_cast<std::size_t>(size));
        } else {
            size = map(nullptr, 0);
            item.key.resize(static_cast<std::size_t>(std::max(size, 0)));
            map(item.key.data(), size);
        }
    }
    return item;
}

std::vector<CNameList::Item> CNameList::SortedItems(const std::vector<std::wstring>& names)
{
    std::vector<Item> items;
    items.reserve(names.size());
    std::transform(names.begin(), names.end(), std::back_inserter(items), &ItemFor);
    std::stable_sort(items.begin(), items.end(),
                     [](const Item& left, const Item& right) { return left.key < right.key; });
    return items;
}

void CNameList::Add(std::vector<Item> sorted)
{
    if (sorted.empty()) {
        return;
    }
    if (m_items.empty() || sorted.size() <= m_manyMoves / m_items.size()) {
        InsertSingly(std::move(sorted));
        return;
    }
    std::vector<bool> wasSelected(m_items.size(), false);
    for (const std::size_t place : Selected()) {
        wasSelected[place] = true;
    }
    // Room for all beforehand: from the first item moved on, nothing may fail.
    std::vector<Item> all;
    std::vector<bool> isSelected;
    all.reserve(m_items.size() + sorted.size());
    isSelected.reserve(m_items.size() + sorted.size());
    std::size_t old = 0;
    for (Item& item : sorted) {
        for (; old < m_items.size() && m_items[old].key <= item.key; ++old) {
            all.push_back(std::move(m_items[old]));
            isSelected.push_back(wasSelected[old]);
        }
        all.push_back(std::move(item));
        isSelected.push_back(false);
    }
    for (; old < m_items.size(); ++old) {
        all.push_back(std::move(m_items[old]));
        isSelected.push_back(wasSelected[old]);
    }
    Refill(std::move(all), isSelected);
}

void CNameList::InsertSingly(std::vector<Item> sorted)
{
    Change change(*this);
    ::SendMessageW(Handle(), LVM_SETITEMCOUNT, m_items.size() + sorted.size(), LVSICF_NOSCROLL);
    std::vector<Item> all;
    all.reserve(m_items.size() + sorted.size());
    auto old = m_items.begin();
    for (Item& item : sorted) {
        const auto end = std::upper_bound(old, m_items.end(), item.key,
                                          [](const std::string& key, const Item& each) { return key < each.key; });
        all.insert(all.end(), std::make_move_iterator(old), std::make_move_iterator(end));
        old = end;
        InsertAt(all.size(), item);
        all.push_back(std::move(item));
    }
    all.insert(all.end(), std::make_move_iterator(old), std::make_move_iterator(m_items.end()));
    change.Finish(std::move(all));
}

void CNameList::Refill(std::vector<Item> items, const std::vector<bool>& isSelected)
{
    Change change(*this);
    ::SendMessageW(Handle(), LVM_DELETEALLITEMS, 0, 0);
    ::SendMessageW(Handle(), LVM_SETITEMCOUNT, items.size(), LVSICF_NOSCROLL);
    for (std::size_t place = 0; place < items.size(); ++place) {
        InsertAt(place, items[place]);
        if (place < isSelected.size() && isSelected[place]) {
            SetItemState(Handle(), static_cast<int>(place), LVIS_SELECTED, LVIS_SELECTED);
        }
    }
    change.Finish(std::move(items));
}

void CNameList::InsertAt(std::size_t place, const Item& item)
{
    LVITEMW shown{};
    shown.mask = LVIF_TEXT;
    shown.iItem = static_cast<int>(place);
    shown.pszText = const_cast<wchar_t*>(item.name.c_str()); // NOLINT(cppcoreguidelines-pro-type-const-cast): only read
    ::SendMessageW(Handle(), LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&shown));
}

void CNameList::TakeOver()
{
    if (!m_isStale) {
        return;
    }
    const SubclassPause pause(*this);
    const auto count = static_cast<int>(::SendMessageW(Handle(), LVM_GETITEMCOUNT, 0, 0));
    std::vector<Item> items;
    items.reserve(static_cast<std::size_t>(count));
    for (int place = 0; place < count; ++place) {
        items.push_back(ItemFor(ItemText(Handle(), place)));
    }
    const auto isBefore = [](const Item& left, const Item& right) { return left.key < right.key; };
    if (std::is_sorted(items.begin(), items.end(), isBefore)) {
        m_items = std::move(items);
        m_isStale = false;
        return;
    }
    std::stable_sort(items.begin(), items.end(), isBefore);
    Refill(std::move(items), {});
}

} // namespace sitekeeper
