// Builds dialog templates byte by byte, for tests.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace sitekeeper {

/// Appends what a dialog template is made of. Every call gives the builder itself, so that a template reads like a
/// list.
class TemplateBuilder
{
public:
    /// The heads up to, not including, the menu.
    TemplateBuilder& PlainHead(std::uint32_t style, std::uint16_t itemCount);
    TemplateBuilder& ExtendedHead(std::uint32_t style, std::uint16_t itemCount);

    TemplateBuilder& Word(std::uint16_t value);
    TemplateBuilder& DoubleWord(std::uint32_t value);
    /// With its terminating zero. An empty text is also "no menu" and "the usual window class".
    TemplateBuilder& Text(std::wstring_view text);
    /// A menu or window class by number.
    TemplateBuilder& Number(std::uint16_t number);
    TemplateBuilder& PlainFont(std::uint16_t size, std::wstring_view face);
    TemplateBuilder& ExtendedFont(std::uint16_t size, std::uint16_t weight, std::uint8_t italic, std::uint8_t set,
                                  std::wstring_view face);
    /// Zeros up to the next multiple of four bytes, as before each item.
    TemplateBuilder& Align();
    TemplateBuilder& Bytes(const std::vector<std::byte>& bytes);

    [[nodiscard]] const std::vector<std::byte>& Result() const { return m_bytes; }

private:
    std::vector<std::byte> m_bytes;
};

} // namespace sitekeeper
