#include "access/EntryOrder.h"
#include "access/IniFile.h"
#include "access/PlainText.h"
#include "access/SafeSave.h"

#include <algorithm>
#include <array>

namespace sitekeeper {
namespace {

/// A line end as all builds write it. Readers take a lone "\n" too.
constexpr std::string_view LineEnd = "\r\n";

using LineParts = std::array<std::wstring_view, 3>;

/// False when a character is not below 128; `bytes` is then as it was.
bool AppendPlainLine(const LineParts& parts, std::string& bytes)
{
    const std::size_t old = bytes.size();
    bytes.resize(old + parts[0].size() + parts[1].size() + parts[2].size() + LineEnd.size());
    char* const begin = bytes.data() + old;
    char* place = begin;
    for (const std::wstring_view part : parts) {
        if (place != begin && part.data() == parts[0].data() && part.size() == parts[0].size()) {
            std::copy_n(begin, part.size(), place); // a name whose value is the name itself
        } else if (!NarrowPlainText(part, place)) {
            bytes.resize(old);
            return false;
        }
        place += part.size();
    }
    std::copy(LineEnd.begin(), LineEnd.end(), place);
    return true;
}

/// False when a character has no place in the code page.
bool AppendLine(const CodePage& codePage, const LineParts& parts, std::string& bytes)
{
    if (AppendPlainLine(parts, bytes)) {
        return true;
    }
    for (const std::wstring_view part : parts) {
        if (!codePage.Encode(part, bytes)) {
            return false;
        }
    }
    bytes += LineEnd;
    return true;
}

} // namespace

int CIniFile::Save(bool isForced)
{
    if (m_bDirty == 0 && !isForced) {
        return Success;
    }
    // The content is laid out before the file is touched and the entries are put in order after it is written: a failed
    // save changes neither.
    const std::vector<std::uint32_t> order = AscendingOrder(m_aSections, m_aKeys);
    if (!WriteInOrder(order)) {
        return CannotCreate;
    }
    Reorder(order);
    return Success;
}

bool CIniFile::WriteInOrder(const std::vector<std::uint32_t>& order)
{
    std::string bytes;
    if (!EncodeInOrder(order, bytes) || !SaveContent(m_files, m_strFileName, bytes)) {
        return false;
    }
    m_bDirty = 0;
    return true;
}

bool CIniFile::EncodeInOrder(const std::vector<std::uint32_t>& order, std::string& bytes) const
{
    std::size_t characters = 0;
    for (std::size_t number = 0; number < m_aKeys.size(); ++number) {
        characters += m_aKeys[number].size() + m_strSeparator.size() + m_aValues[number].size() + LineEnd.size();
    }
    bytes.reserve(characters);
    bool isBelowNamed = false;
    for (auto begin = order.begin(); begin != order.end();) {
        const std::wstring_view section = m_aSections[*begin];
        const auto end = std::partition_point(
            begin, order.end(), [&](std::uint32_t number) { return m_aSections[number].data() == section.data(); });
        if (isBelowNamed) {
            bytes += LineEnd;
        }
        isBelowNamed = !section.empty();
        if (isBelowNamed && !AppendLine(m_codePage, {L"[", section, L"]"}, bytes)) {
            return false;
        }
        if (!EncodeEntries({begin, end}, bytes)) {
            return false;
        }
        begin = end;
    }
    return true;
}

bool CIniFile::EncodeEntries(std::span<const std::uint32_t> numbers, std::string& bytes) const
{
    // In order of their keys the entries lie anywhere in memory. First their views are asked for, then their texts.
    constexpr std::size_t TextsAhead = 16;
    constexpr std::size_t ViewsAhead = 2 * TextsAhead;
    for (std::size_t place = 0; place < numbers.size(); ++place) {
        if (place + ViewsAhead < numbers.size()) {
            __builtin_prefetch(&m_aKeys[numbers[place + ViewsAhead]]);
            __builtin_prefetch(&m_aValues[numbers[place + ViewsAhead]]);
            __builtin_prefetch(m_aKeys[numbers[place + TextsAhead]].data());
        }
        const std::uint32_t number = numbers[place];
        if (!AppendLine(m_codePage, {m_aKeys[number], m_strSeparator, m_aValues[number]}, bytes)) {
            return false;
        }
    }
    return true;
}

} // namespace sitekeeper
