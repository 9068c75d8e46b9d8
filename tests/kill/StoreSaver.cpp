// Saves a store as the program does: once, or without end until someone kills it.
//
// store_saver once FILE ENTRIES       prints the result of the save and exits with it
// store_saver endless FILE ID         by turns two contents, first the one that is not there; sets the event of that id
// before the first save
#include "kill/StoreSaver.h"

#include "access/IniFile.h"
#include "win32/Handles.h"
#include "win32/Win32CodePage.h"
#include "win32/Win32FileSystem.h"

#include <windows.h>

#include <cstdio>
#include <cwchar>
#include <string_view>
#include <vector>

namespace {

using namespace sitekeeper;

constexpr int WrongUse = 64;
constexpr int LostSave = 65;

int SaveOnce(const std::wstring& path, int entries)
{
    Win32FileSystem files;
    const Win32CodePage codePage;
    CIniFile store(files, codePage, L"");
    store.Open(path);
    store.Clear();
    Fill(store, Variant::First, entries);
    const int result = store.Save(true);
    TextReader nothing("", codePage);
    store.Load(nothing); // a failed save is not to be tried again at the end
    // Said as well: a program that ends with an error and without a word is taken for one that Wine did not start.
    std::printf("saved %d entries: %d\n", entries, result);
    return result;
}

bool Holds(CIniFile& store, Variant variant)
{
    std::vector<std::wstring> keys;
    std::vector<std::wstring> values;
    store.SetSection(SectionOf(variant));
    store.GetSectionEntries(keys, values);
    return !keys.empty();
}

int SaveEndlessly(const std::wstring& path, const std::wstring& id)
{
    Win32FileSystem files;
    const Win32CodePage codePage;
    CIniFile one(files, codePage, L"");
    CIniFile other(files, codePage, L"");
    one.Open(path);
    other.Open(path);
    const bool isFirstThere = Holds(one, Variant::First);
    one.Clear();
    other.Clear();
    Fill(one, isFirstThere ? Variant::Second : Variant::First, EntriesOfLargeFile);
    Fill(other, isFirstThere ? Variant::First : Variant::Second, EntriesOfLargeFile);
    const HANDLE started = ::OpenEventW(EVENT_MODIFY_STATE, FALSE, StartedEventName(id).c_str());
    if (started == nullptr || ::SetEvent(started) == FALSE) {
        return WrongUse;
    }
    for (;;) {
        if (one.Save(true) != CIniFile::Success || other.Save(true) != CIniFile::Success) {
            return LostSave;
        }
    }
}

} // namespace

int wmain(int count, wchar_t** arguments)
{
    const std::wstring_view command = count == 4 ? arguments[1] : L"";
    if (command == L"once") {
        return SaveOnce(arguments[2], static_cast<int>(std::wcstol(arguments[3], nullptr, 10)));
    }
    if (command == L"endless") {
        return SaveEndlessly(arguments[2], arguments[3]);
    }
    std::fputs("usage: store_saver once FILE ENTRIES | endless FILE ID\n", stderr);
    return WrongUse;
}
