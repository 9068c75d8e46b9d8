// Any bytes as the content of the shared file: read as the naive store reads them, and what is saved, loaded and saved
// again is the same bytes.
#include "access/IniFile.h"
#include "fuzz/FuzzInput.h"
#include "support/NaiveIniFile.h"
#include "support/PlainFiles.h"
#include "support/Utf8CodePage.h"

#include <algorithm>

namespace {

using namespace sitekeeper;

constexpr const wchar_t* Path = L"any.ini";
/// Beyond it the naive store takes too long.
constexpr std::size_t LargestCompared = 4096;

void CheckEntries(CIniFile& store, NaiveIniFile& naive)
{
    for (const std::wstring& section : naive.Sections()) {
        std::vector<std::wstring> keys;
        std::vector<std::wstring> values;
        std::vector<std::wstring> naiveKeys;
        std::vector<std::wstring> naiveValues;
        store.SetSection(section);
        naive.SetSection(section);
        store.GetSectionEntries(keys, values);
        naive.GetSectionEntries(naiveKeys, naiveValues);
        Require(keys == naiveKeys && values == naiveValues && !keys.empty());
        std::wstring value;
        store.GetValue(keys.back(), value, L"");
        Require(value == values.back());
    }
}

/// A value that a later line emptied is not read again, and a key that ends like the beginning of a separator is read
/// as a shorter one.
bool SurvivesSaving(const NaiveIniFile& naive)
{
    const auto isEmpty = [](const std::wstring& value) { return value.empty(); };
    const auto endsOddly = [](const std::wstring& key) { return key.ends_with(L" ="); };
    return std::none_of(naive.Values().begin(), naive.Values().end(), isEmpty) &&
           std::none_of(naive.Keys().begin(), naive.Keys().end(), endsOddly);
}

std::string SavedAnew(PlainFiles& files, const Utf8CodePage& codePage)
{
    CIniFile store(files, codePage, L"");
    Require(store.Open(Path) == CIniFile::Success);
    Require(store.Save(true) == CIniFile::Success);
    return files.ReadContent(Path).value();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string bytes(data, data + size);
    const Utf8CodePage codePage;
    PlainFiles files;
    files.Put(Path, bytes);
    CIniFile store(files, codePage, L"");
    Require(store.Open(Path) == CIniFile::Success);
    Require(store.Save(false) == CIniFile::Success && files.ReadContent(Path) == bytes);
    if (size > LargestCompared) {
        Require(store.Save(true) == CIniFile::Success);
        return 0;
    }
    NaiveIniFile naive;
    naive.Load(bytes);
    CheckEntries(store, naive);
    std::optional<std::string> expected;
    Require(naive.Save(true, true, expected) == CIniFile::Success);
    Require(store.Save(true) == CIniFile::Success && files.ReadContent(Path) == expected);
    if (SurvivesSaving(naive)) {
        Require(SavedAnew(files, codePage) == *expected);
    }
    return 0;
}
