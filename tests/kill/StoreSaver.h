// What the saver saves, for it and for those who look at what is left of it.
#pragma once

#include "access/IniFile.h"

#include <string>

namespace sitekeeper {

/// Two contents of one file, neither a part of the other.
enum class Variant
{
    First,
    Second
};

/// Enough entries for a file of about 200 KB, so that a save takes a while.
inline constexpr int EntriesOfLargeFile = 500;

[[nodiscard]] inline const wchar_t* SectionOf(Variant variant)
{
    return variant == Variant::First ? L"First" : L"Second";
}

/// Puts `entries` entries of about 400 bytes each into an empty store.
inline void Fill(CIniFile& store, Variant variant, int entries)
{
    const bool isFirst = variant == Variant::First;
    store.SetSection(SectionOf(variant));
    const std::wstring value(isFirst ? 390 : 370, isFirst ? L'1' : L'2');
    for (int number = 0; number < entries; ++number) {
        store.SetValue(L"Key" + std::to_wstring(100'000 + number), value);
    }
}

/// Named so that the saver's starter can make it first.
[[nodiscard]] inline std::wstring StartedEventName(const std::wstring& id)
{
    return L"Local\\StoreSaverStarted" + id;
}

} // namespace sitekeeper
