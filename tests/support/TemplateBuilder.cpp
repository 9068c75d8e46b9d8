#include "support/TemplateBuilder.h"

#include "text/Utf16.h"

namespace sitekeeper {

TemplateBuilder& TemplateBuilder::PlainHead(std::uint32_t style, std::uint16_t itemCount)
{
    constexpr std::uint32_t ExtendedStyle = 0x00040000;
    DoubleWord(style).DoubleWord(ExtendedStyle).Word(itemCount);
    return Word(10).Word(20).Word(271).Word(217);
}

TemplateBuilder& TemplateBuilder::ExtendedHead(std::uint32_t style, std::uint16_t itemCount)
{
    constexpr std::uint16_t Version = 1;
    constexpr std::uint16_t Signature = 0xFFFF;
    constexpr std::uint32_t HelpId = 0x01020304;
    constexpr std::uint32_t ExtendedStyle = 0x00040000;
    Word(Version).Word(Signature).DoubleWord(HelpId).DoubleWord(ExtendedStyle).DoubleWord(style).Word(itemCount);
    return Word(10).Word(20).Word(271).Word(217);
}

TemplateBuilder& TemplateBuilder::Word(std::uint16_t value)
{
    m_bytes.push_back(static_cast<std::byte>(value & 0xFFU));
    m_bytes.push_back(static_cast<std::byte>(value >> 8U));
    return *this;
}

TemplateBuilder& TemplateBuilder::DoubleWord(std::uint32_t value)
{
    return Word(static_cast<std::uint16_t>(value & 0xFFFFU)).Word(static_cast<std::uint16_t>(value >> 16U));
}

TemplateBuilder& TemplateBuilder::Text(std::wstring_view text)
{
    return Bytes(EncodeUtf16(text)).Word(0);
}

TemplateBuilder& TemplateBuilder::Number(std::uint16_t number)
{
    return Word(0xFFFF).Word(number);
}

TemplateBuilder& TemplateBuilder::PlainFont(std::uint16_t size, std::wstring_view face)
{
    return Word(size).Text(face);
}

TemplateBuilder& TemplateBuilder::ExtendedFont(std::uint16_t size, std::uint16_t weight, std::uint8_t italic,
                                               std::uint8_t set, std::wstring_view face)
{
    const auto slantAndSet = static_cast<std::uint16_t>(italic | set << 8U);
    return Word(size).Word(weight).Word(slantAndSet).Text(face);
}

TemplateBuilder& TemplateBuilder::Align()
{
    while (m_bytes.size() % 4 != 0) {
        m_bytes.push_back(std::byte{0});
    }
    return *this;
}

TemplateBuilder& TemplateBuilder::Bytes(const std::vector<std::byte>& bytes)
{
    m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
    return *this;
}

} // namespace sitekeeper
