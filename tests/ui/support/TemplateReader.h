// A dialog template of the extended kind, read item by item: what the resource really says.
#pragma once

#include "support/DialogPage.h"

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <span>
#include <string>
#include <vector>

namespace sitekeeper {

struct TemplateItem
{
    std::uint32_t id = 0;
    std::wstring windowClass;
    std::wstring text;
    UnitRectangle place;
    std::uint32_t style = 0;
    std::uint32_t extendedStyle = 0;

    bool operator==(const TemplateItem&) const = default;
};
std::ostream& operator<<(std::ostream& out, const TemplateItem& item);

struct DialogTemplate
{
    std::uint32_t style = 0;
    std::uint32_t extendedStyle = 0;
    UnitRectangle place;
    /// Numbers as "#number"; empty for none.
    std::wstring menu;
    std::wstring windowClass;
    std::wstring title;
    std::uint16_t fontSize = 0;
    std::uint16_t fontWeight = 0;
    bool isItalic = false;
    std::uint8_t characterSet = 0;
    std::wstring fontFace;
    std::vector<TemplateItem> items;
};

/// The numbers of all dialog templates that a module has, those of the tests among them.
[[nodiscard]] std::vector<UINT> DialogNumbers(HMODULE module);

/// Raises std::runtime_error for bytes that are no such template, or are more or fewer than it needs.
[[nodiscard]] DialogTemplate ReadTemplate(std::span<const std::byte> bytes);

} // namespace sitekeeper
