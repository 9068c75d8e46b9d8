// What the program never changes in a store, within the reach of tests.
#pragma once

#include "access/IniFile.h"

#include <string_view>

namespace sitekeeper {

struct IniFileTestAccess
{
    static void SetCaseSensitive(CIniFile& file, bool isCaseSensitive)
    {
        file.m_bCaseSensitive = isCaseSensitive ? std::uint8_t{1} : std::uint8_t{0};
    }
    static void SetSeparator(CIniFile& file, std::wstring_view separator) { file.m_strSeparator = separator; }
    static void SetAutoSave(CIniFile& file, bool isAutoSaving)
    {
        file.m_bAutoSave = isAutoSaving ? std::uint8_t{1} : std::uint8_t{0};
    }
};

} // namespace sitekeeper
