// A list control that shows user names in ascending order, quick for a hundred thousand of them.
#pragma once

#include "frame/Wnd.h"

#include <windows.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace sitekeeper {

/// Takes over a list control with the sorting style. The control alone would sort anew at each insertion and walk over
/// all items in each search; so the names stand here once more, with what the system compares them by, in the order in
/// which they are shown. Changes that others make to the control are noticed and taken over.
/// Names are compared the way the control does it: by the user's language, without regard to case.
class CNameList final : public CWnd
{
public:
    /// Moving the control's items about costs a few bytes for each item behind a change. From `manyMoves` such
    /// bytes-to-be on (changes times items), all names are shown anew instead.
    explicit CNameList(std::size_t manyMoves = 2'000'000'000) : m_manyMoves(manyMoves) {}

    /// How many names are shown.
    [[nodiscard]] std::size_t Count();

    /// The names as they are shown, from the first to the last.
    [[nodiscard]] std::vector<std::wstring> Names();

    /// The place of a name that is shown; nothing when none is equal to it. Takes log n comparisons.
    [[nodiscard]] std::optional<std::size_t> Find(const std::wstring& name);

    /// Shows further names, equal ones behind those that are there. Selection and focus stay with their names.
    void Insert(const std::vector<std::wstring>& names);

    /// The same for those of `names` that are not shown; of equal ones among them, for the first.
    void InsertMissing(const std::vector<std::wstring>& names);

    /// Shows `names` in place of all, none selected. Names that stay are not touched: the control needs long to take
    /// an item away.
    void Replace(const std::vector<std::wstring>& names);

    /// Takes names away. `places` is ascending.
    void Remove(const std::vector<std::size_t>& places);

    /// The places of the selected names, ascending, and the names at such places.
    [[nodiscard]] std::vector<std::size_t> Selected() const;
    [[nodiscard]] std::vector<std::wstring> NamesAt(const std::vector<std::size_t>& places);

    void SelectAll();
    void SelectNone();

    /// Gives the focus to the name at `place`, or to the last one, and selects nothing else.
    void SelectOnly(std::size_t place);

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    struct Item
    {
        std::wstring name;
        /// The system's sort key: bytes that compare like the names do.
        std::string key;
    };
    class Change;

    [[nodiscard]] static Item ItemFor(const std::wstring& name);
    [[nodiscard]] static std::vector<Item> SortedItems(const std::vector<std::wstring>& names);

    void Add(std::vector<Item> sorted);
    void InsertSingly(std::vector<Item> sorted);
    /// Shows `items` in place of all; `isSelected` says for each whether it is to be selected.
    void Refill(std::vector<Item> items, const std::vector<bool>& isSelected);
    void InsertAt(std::size_t place, const Item& item);
    void TakeOver();
    /// Marks the first name where none is marked, selecting nothing: otherwise nobody sees which list takes the keys.
    void ShowMark();
    /// Takes that mark away again while nothing is selected.
    void HideMark();

    std::size_t m_manyMoves;
    std::vector<Item> m_items;
    bool m_isStale = true;
    bool m_isMarked = false;
};

} // namespace sitekeeper
