// The standard texts of a version resource.
#pragma once

#include "platform/VersionResources.h"

#include <array>
#include <cstddef>
#include <string>

namespace sitekeeper {

/// The texts by the names that version resources have for them, in the order of the record.
enum class VersionString : std::size_t
{
    Comments,
    CompanyName,
    FileDescription,
    FileVersion,
    InternalName,
    LegalCopyright,
    LegalTrademarks,
    OriginalFilename,
    PrivateBuild,
    ProductName,
    ProductVersion,
    SpecialBuild
};

class VersionStrings
{
public:
    static constexpr std::size_t Count = 12;

    [[nodiscard]] std::wstring& operator[](VersionString which) { return m_texts.at(static_cast<std::size_t>(which)); }
    [[nodiscard]] const std::wstring& operator[](VersionString which) const
    {
        return m_texts.at(static_cast<std::size_t>(which));
    }

    bool operator==(const VersionStrings&) const = default;

private:
    std::array<std::wstring, Count> m_texts;
};

/// Fills `strings` from the version resource of the file `path` + `extension`: each text empty that the resource lacks,
/// all of them where there is none or it is damaged. The texts are those of the resource's first language and code
/// page; where it names none, of code page 1252 and of the language whose number is the length of what stands in the
/// names' place, deliberately.
void ReadVersionStrings(const VersionResources& resources, VersionStrings& strings, const std::wstring& path,
                        const std::wstring& extension);

} // namespace sitekeeper
