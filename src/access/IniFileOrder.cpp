#include "access/EntryOrder.h"
#include "access/IniFile.h"
#include "platform/PlatformError.h"

#include <algorithm>
#include <utility>

namespace sitekeeper {
namespace {

std::vector<std::wstring_view> InOrder(const std::vector<std::wstring_view>& texts,
                                       const std::vector<std::uint32_t>& order)
{
    std::vector<std::wstring_view> ordered;
    ordered.reserve(order.size());
    for (const std::uint32_t number : order) {
        ordered.push_back(texts[number]);
    }
    return ordered;
}

} // namespace

void CIniFile::DeleteSection(std::wstring_view name)
{
    const auto found = m_sectionNames.find(name);
    if (found == m_sectionNames.end()) {
        return;
    }
    std::vector<std::uint32_t> numbers(m_aKeys.size());
    std::uint32_t kept = 0;
    for (std::size_t number = 0; number < numbers.size(); ++number) {
        numbers[number] = m_aSections[number].data() == found->data() ? EntryIndex::None : kept++;
    }
    if (kept == numbers.size()) {
        return;
    }
    m_index.RenumberAll(numbers);
    for (TextArray* const array : {&m_aSections, &m_aKeys, &m_aValues}) {
        for (std::size_t number = 0; number < numbers.size(); ++number) {
            if (numbers[number] != EntryIndex::None) {
                (*array)[numbers[number]] = (*array)[number];
            }
        }
        array->resize(kept);
    }
    m_bDirty = 1;
}

void CIniFile::Sort()
{
    Reorder(AscendingOrder(m_aSections, m_aKeys));
}

void CIniFile::SwapEntries(std::size_t a, std::size_t b)
{
    if (a >= m_aKeys.size() || b >= m_aKeys.size()) {
        throw PlatformError(ResultCode::InvalidArgument, L"An entry of an INI file was named that it does not have.");
    }
    if (a == b) {
        return;
    }
    const auto first = static_cast<std::uint32_t>(a);
    const auto second = static_cast<std::uint32_t>(b);
    m_index.Renumber(HashOfEntry(first), first, EntryIndex::None - 1);
    m_index.Renumber(HashOfEntry(second), second, first);
    m_index.Renumber(HashOfEntry(first), EntryIndex::None - 1, second);
    std::swap(m_aSections[a], m_aSections[b]);
    std::swap(m_aKeys[a], m_aKeys[b]);
    std::swap(m_aValues[a], m_aValues[b]);
}

void CIniFile::Reorder(const std::vector<std::uint32_t>& order)
{
    if (std::is_sorted(order.begin(), order.end())) {
        return;
    }
    std::vector<std::uint32_t> numbers(order.size());
    for (std::uint32_t place = 0; place < order.size(); ++place) {
        numbers[order[place]] = place;
    }
    TextArray sections = InOrder(m_aSections, order);
    TextArray keys = InOrder(m_aKeys, order);
    TextArray values = InOrder(m_aValues, order);
    m_index.RenumberAll(numbers);
    m_aSections.swap(sections);
    m_aKeys.swap(keys);
    m_aValues.swap(values);
}

} // namespace sitekeeper
