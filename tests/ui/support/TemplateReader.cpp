#include "support/TemplateReader.h"

#include <gtest/gtest.h>
#include <map>
#include <stdexcept>

namespace sitekeeper {
namespace {

constexpr std::uint16_t OrdinalMark = 0xFFFF;

class Reader
{
public:
    explicit Reader(std::span<const std::byte> bytes) : m_bytes(bytes) {}

    std::uint8_t Byte()
    {
        if (m_position >= m_bytes.size()) {
            throw std::runtime_error("the template ends too early");
        }
        return std::to_integer<std::uint8_t>(m_bytes[m_position++]);
    }
    std::uint16_t Word()
    {
        const std::uint16_t low = Byte();
        return static_cast<std::uint16_t>(low | Byte() << 8);
    }
    std::uint32_t DoubleWord()
    {
        const std::uint32_t low = Word();
        return low | static_cast<std::uint32_t>(Word()) << 16;
    }
    std::wstring Text()
    {
        std::wstring text;
        while (const std::uint16_t unit = Word()) {
            text += static_cast<wchar_t>(unit);
        }
        return text;
    }
    std::wstring TextOrNumber()
    {
        const std::size_t start = m_position;
        if (Word() == OrdinalMark) {
            return L"#" + std::to_wstring(Word());
        }
        m_position = start;
        return Text();
    }
    UnitRectangle Place()
    {
        UnitRectangle place;
        for (int* const field : {&place.left, &place.top, &place.width, &place.height}) {
            *field = static_cast<std::int16_t>(Word());
        }
        return place;
    }
    void Align()
    {
        while (m_position % 4 != 0) {
            Byte();
        }
    }
    [[nodiscard]] std::size_t Left() const { return m_bytes.size() - m_position; }

private:
    std::span<const std::byte> m_bytes;
    std::size_t m_position = 0;
};

/// The classes that a template gives as numbers, and one that the resource compiler writes in capitals.
std::wstring ClassName(const std::wstring& stored)
{
    static const std::map<std::wstring, std::wstring> Known = {
        {L"#128", L"Button"},
        {L"#129", L"Edit"},
        {L"#130", L"Static"},
        {L"#131", L"ListBox"},
        {L"#132", L"ScrollBar"},
        {L"#133", L"ComboBox"},
        {L"SYSDATETIMEPICK32", L"SysDateTimePick32"},
    };
    const auto found = Known.find(stored);
    return found == Known.end() ? stored : found->second;
}

TemplateItem ReadItem(Reader& reader)
{
    TemplateItem item;
    reader.Align();
    reader.DoubleWord(); // help number
    item.extendedStyle = reader.DoubleWord();
    item.style = reader.DoubleWord();
    item.place = reader.Place();
    item.id = reader.DoubleWord();
    item.windowClass = ClassName(reader.TextOrNumber());
    item.text = reader.TextOrNumber();
    if (reader.Word() != 0) {
        throw std::runtime_error("an item with creation data");
    }
    return item;
}

// NOLINTNEXTLINE(readability-non-const-parameter): the system calls it
BOOL CALLBACK CollectNumber(HMODULE /*module*/, const wchar_t* /*type*/, wchar_t* name, LONG_PTR list)
{
    reinterpret_cast<std::vector<UINT>*>(list)->push_back(LOWORD(reinterpret_cast<UINT_PTR>(name)));
    return TRUE;
}

} // namespace

std::ostream& operator<<(std::ostream& out, const TemplateItem& item)
{
    return out << static_cast<std::int32_t>(item.id) << ' ' << testing::PrintToString(item.windowClass) << ' '
               << testing::PrintToString(item.text) << " at " << item.place << ", style " << std::hex << item.style
               << '/' << item.extendedStyle << std::dec;
}

std::vector<UINT> DialogNumbers(HMODULE module)
{
    std::vector<UINT> numbers;
    ::EnumResourceNamesW(module, RT_DIALOG, &CollectNumber, reinterpret_cast<LONG_PTR>(&numbers));
    return numbers;
}

DialogTemplate ReadTemplate(std::span<const std::byte> bytes)
{
    Reader reader(bytes);
    if (reader.Word() != 1 || reader.Word() != OrdinalMark) {
        throw std::runtime_error("no template of the extended kind");
    }
    DialogTemplate dialog;
    reader.DoubleWord(); // help number
    dialog.extendedStyle = reader.DoubleWord();
    dialog.style = reader.DoubleWord();
    const std::uint16_t count = reader.Word();
    dialog.place = reader.Place();
    dialog.menu = reader.TextOrNumber();
    dialog.windowClass = reader.TextOrNumber();
    dialog.title = reader.Text();
    if ((dialog.style & DS_SETFONT) != 0) {
        dialog.fontSize = reader.Word();
        dialog.fontWeight = reader.Word();
        dialog.isItalic = reader.Byte() != 0;
        dialog.characterSet = reader.Byte();
        dialog.fontFace = reader.Text();
    }
    for (std::uint16_t i = 0; i < count; ++i) {
        dialog.items.push_back(ReadItem(reader));
    }
    if (reader.Left() > 3) { // what fills up to the next multiple of four may stay
        throw std::runtime_error("bytes behind the last item");
    }
    return dialog;
}

} // namespace sitekeeper
