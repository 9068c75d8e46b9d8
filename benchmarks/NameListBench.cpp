// Benchmarks of the list of names beside the same list control used bare: filled in order without sorting of its own,
// and every tenth name, selected, moved to another list. Prints medians of runs that alternate, as Measure.h says.
//
// name_list_bench [NAMES [RUNS]]
#include "access/NameList.h"
#include "Measure.h"

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <cwchar>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace sitekeeper;
using namespace sitekeeper::bench;

using Names = std::vector<std::wstring>;

HWND MakeList(HWND parent)
{
    constexpr DWORD Style = WS_CHILD | WS_VISIBLE | LVS_LIST | LVS_SHOWSELALWAYS | LVS_SORTASCENDING;
    return ::CreateWindowExW(0, WC_LISTVIEWW, L"", Style, 0, 0, 200, 300, parent, nullptr, ::GetModuleHandleW(nullptr),
                             nullptr);
}

void InsertBare(HWND list, std::size_t place, const std::wstring& name)
{
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    item.iItem = static_cast<int>(place);
    item.pszText = const_cast<wchar_t*>(name.c_str());
    ::SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

/// A control without sorting and drawing while something is done to it.
template <typename Work>
void Quietly(HWND list, Work work)
{
    const LONG_PTR style = ::GetWindowLongPtrW(list, GWL_STYLE);
    ::SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    ::SetWindowLongPtrW(list, GWL_STYLE, style & ~LVS_SORTASCENDING);
    work();
    ::SetWindowLongPtrW(list, GWL_STYLE, style);
    ::SendMessageW(list, WM_SETREDRAW, TRUE, 0);
}

void FillBare(HWND list, Names names)
{
    std::sort(names.begin(), names.end(), [](const std::wstring& left, const std::wstring& right) {
        return ::lstrcmpiW(left.c_str(), right.c_str()) < 0;
    });
    Quietly(list, [&] {
        for (std::size_t place = 0; place < names.size(); ++place) {
            InsertBare(list, place, names[place]);
        }
    });
}

Names SomeNames(std::size_t count, const wchar_t* stem)
{
    Names names;
    for (std::size_t number = 0; number < count; ++number) {
        wchar_t name[32]{};
        std::swprintf(name, std::size(name), L"%ls%06u", stem, static_cast<unsigned>(number));
        names.push_back(name);
    }
    std::shuffle(names.begin(), names.end(), std::mt19937(1));
    return names;
}

/// Every so many-th place of a list, selected.
std::vector<std::size_t> SelectSome(HWND list, std::size_t count, std::size_t step)
{
    std::vector<std::size_t> places;
    ::SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    for (std::size_t place = 0; place < count; place += step) {
        LVITEMW item{};
        item.state = LVIS_SELECTED;
        item.stateMask = LVIS_SELECTED;
        ::SendMessageW(list, LVM_SETITEMSTATE, place, reinterpret_cast<LPARAM>(&item));
        places.push_back(place);
    }
    ::SendMessageW(list, WM_SETREDRAW, TRUE, 0);
    return places;
}

double OurFill(HWND parent, const Names& names)
{
    CNameList list;
    list.SubclassWindow(MakeList(parent));
    const Stopwatch watch;
    list.Insert(names);
    const double milliseconds = watch.Milliseconds();
    return milliseconds;
}

double BareFill(HWND parent, const Names& names)
{
    const HWND list = MakeList(parent);
    const Stopwatch watch;
    FillBare(list, names);
    const double milliseconds = watch.Milliseconds();
    return milliseconds;
}

double OurMove(HWND parent, const Names& names, const Names& others, std::size_t step)
{
    CNameList source;
    CNameList target;
    source.SubclassWindow(MakeList(parent));
    target.SubclassWindow(MakeList(parent));
    source.Insert(names);
    target.Insert(others);
    SelectSome(source.Handle(), names.size(), step);
    const Stopwatch watch;
    const std::vector<std::size_t> selected = source.Selected();
    target.InsertMissing(source.NamesAt(selected));
    source.Remove(selected);
    const double milliseconds = watch.Milliseconds();
    return milliseconds;
}

/// The same at the places known beforehand: inserted in ascending order, deleted from the end.
double BareMove(HWND parent, const Names& names, const Names& others, std::size_t step)
{
    const HWND source = MakeList(parent);
    const HWND target = MakeList(parent);
    FillBare(source, names);
    FillBare(target, others);
    const std::vector<std::size_t> places = SelectSome(source, names.size(), step);
    Names sorted = names;
    std::sort(sorted.begin(), sorted.end());
    const Stopwatch watch;
    Quietly(target, [&] {
        for (const std::size_t place : places) {
            InsertBare(target, 2 * place, sorted[place]);
        }
    });
    Quietly(source, [&] {
        for (auto place = places.rbegin(); place != places.rend(); ++place) {
            ::SendMessageW(source, LVM_DELETEITEM, *place, 0);
        }
    });
    const double milliseconds = watch.Milliseconds();
    return milliseconds;
}

} // namespace

int wmain(int count, wchar_t** arguments)
{
    const std::size_t size = count > 1 ? std::wcstoul(arguments[1], nullptr, 10) : 100'000;
    const int runs = count > 2 ? static_cast<int>(std::wcstol(arguments[2], nullptr, 10)) : 5;
    ::InitCommonControls();
    const HWND parent = ::CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 300, 300, nullptr, nullptr,
                                          ::GetModuleHandleW(nullptr), nullptr);
    const Names names = SomeNames(size, L"user");
    const Names others = SomeNames(size, L"usex");
    std::vector<double> fills[2];
    std::vector<double> moves[2];
    for (int run = 0; run < runs; ++run) {
        fills[0].push_back(OurFill(parent, names));
        fills[1].push_back(BareFill(parent, names));
        moves[0].push_back(OurMove(parent, names, others, 10));
        moves[1].push_back(BareMove(parent, names, others, 10));
    }
    const auto sizeShown = static_cast<double>(size);
    PrintResult("fill a list with names", sizeShown, "ms", Median(fills[0]), {"sort, append bare", Median(fills[1])});
    PrintResult("move every tenth name", sizeShown, "ms", Median(moves[0]), {"bare, places known", Median(moves[1])});
    // Not by returning: some systems take minutes to take so many items away one by one.
    ::TerminateProcess(::GetCurrentProcess(), 0);
    return 0;
}
