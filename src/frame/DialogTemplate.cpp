#include "frame/DialogTemplate.h"

#include "text/Utf16.h"

namespace sitekeeper {
namespace {

constexpr std::uint32_t HasFont = 0x40; // DS_SETFONT; DS_SHELLFONT contains it
constexpr std::uint16_t ExtendedSignature = 0xFFFF;
constexpr std::uint16_t OrdinalMark = 0xFFFF;
constexpr std::uint16_t RegularWeight = 400;         // FW_NORMAL
constexpr std::uint16_t UprightDefaultSet = 1U << 8; // not italic; DEFAULT_CHARSET

constexpr std::size_t PlainStyleOffset = 0;
constexpr std::size_t PlainHeadSize = 18;
constexpr std::size_t ExtendedStyleOffset = 12;
constexpr std::size_t ExtendedHeadSize = 26;
constexpr std::size_t ItemAlignment = 4;

/// Reads words one after the other; past the end it gives 0 and remembers that it did.
class WordReader
{
public:
    WordReader(std::span<const std::byte> bytes, std::size_t position) : m_bytes(bytes), m_position(position) {}

    std::uint16_t Next()
    {
        if (m_position + 2 > m_bytes.size()) {
            m_isExhausted = true;
            return 0;
        }
        m_position += 2;
        return WordAt(m_bytes, m_position - 2);
    }

    void SkipText()
    {
        while (Next() != 0) {
        }
    }

    /// A resource name or class: nothing (0), a number (0xFFFF and a word), or a text.
    void SkipNameOrNumber()
    {
        const std::uint16_t first = Next();
        if (first == OrdinalMark) {
            Next();
        } else if (first != 0) {
            SkipText();
        }
    }

    [[nodiscard]] std::size_t Position() const { return m_position; }
    [[nodiscard]] bool IsExhausted() const { return m_isExhausted; }

private:
    std::span<const std::byte> m_bytes;
    std::size_t m_position;
    bool m_isExhausted = false;
};

std::size_t AlignedUp(std::size_t position)
{
    return (position + ItemAlignment - 1) / ItemAlignment * ItemAlignment;
}

} // namespace

std::optional<std::vector<std::byte>> WithDialogFont(std::span<const std::byte> dialogTemplate, std::wstring_view face,
                                                     std::uint16_t size)
{
    WordReader start(dialogTemplate, 0);
    const bool isExtended = start.Next() == 1 && start.Next() == ExtendedSignature;
    const std::size_t styleOffset = isExtended ? ExtendedStyleOffset : PlainStyleOffset;
    WordReader reader(dialogTemplate, styleOffset);
    const std::uint32_t style = reader.Next();

    reader = WordReader(dialogTemplate, isExtended ? ExtendedHeadSize : PlainHeadSize);
    reader.SkipNameOrNumber(); // menu
    reader.SkipNameOrNumber(); // window class
    reader.SkipText();         // title
    const std::size_t fontOffset = reader.Position();
    std::uint16_t weight = RegularWeight;
    std::uint16_t slantAndSet = UprightDefaultSet;
    if ((style & HasFont) != 0) {
        reader.Next();
        if (isExtended) {
            weight = reader.Next();
            slantAndSet = reader.Next();
        }
        reader.SkipText();
    }
    if (reader.IsExhausted()) {
        return std::nullopt;
    }

    std::vector<std::byte> changed(dialogTemplate.begin(),
                                   dialogTemplate.begin() + static_cast<std::ptrdiff_t>(fontOffset));
    changed[styleOffset] |= static_cast<std::byte>(HasFont);
    AppendWord(changed, size);
    if (isExtended) {
        AppendWord(changed, weight);
        AppendWord(changed, slantAndSet);
    }
    const std::vector<std::byte> name = EncodeUtf16(face);
    changed.insert(changed.end(), name.begin(), name.end());
    AppendWord(changed, 0);

    const std::size_t oldItems = AlignedUp(reader.Position());
    if (oldItems < dialogTemplate.size()) {
        changed.resize(AlignedUp(changed.size()));
        const auto items = dialogTemplate.subspan(oldItems);
        changed.insert(changed.end(), items.begin(), items.end());
    }
    return changed;
}

} // namespace sitekeeper
