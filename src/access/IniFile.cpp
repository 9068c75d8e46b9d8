#include "access/IniFile.h"

#include "access/EntryOrder.h"
#include "access/PlainText.h"
#include "access/SafeSave.h"
#include "platform/PlatformError.h"
#include "text/Text.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace sitekeeper {
namespace {

constexpr std::wstring_view AroundSections = L"[]\n \t";
constexpr std::wstring_view AroundKeys = L"[]\n\t"; // without the blank, deliberately

/// The length of the separator that files have had from the start. Values begin this far behind the place where the
/// separator was found, whatever separator that was. Deliberate.
constexpr std::size_t SeparatorLength = 3;

/// A line end as all builds write it. Readers take a lone "\n" too.
constexpr std::string_view LineEnd = "\r\n";

std::wstring_view Stripped(std::wstring_view text, std::wstring_view characters)
{
    const std::size_t first = std::min(text.find_first_not_of(characters), text.size());
    text.remove_prefix(first);
    text.remove_suffix(text.size() - (text.find_last_not_of(characters) + 1));
    return text;
}

bool AppendEncoded(const CodePage& codePage, std::wstring_view text, std::string& bytes)
{
    const std::size_t old = bytes.size();
    bytes.resize(old + text.size());
    if (NarrowPlainText(text, bytes.data() + old)) {
        return true;
    }
    bytes.resize(old);
    return codePage.Encode(text, bytes);
}

void AppendLineEnd(std::string& bytes)
{
    bytes.append(LineEnd);
}

} // namespace

CIniFile::CIniFile(FileSystem& files, const CodePage& codePage, std::wstring_view programPath)
    : m_strFileName(DefaultFileName(programPath)), m_files(files), m_codePage(codePage)
{}

CIniFile::~CIniFile()
{
    if (m_bAutoSave == 0) {
        return;
    }
    try {
        Save(false);
    } catch (
        ...) { // NOLINT(bugprone-empty-catch): without memory nothing can be saved, and nobody is told of a failed save
    }
}

std::wstring CIniFile::DefaultFileName(std::wstring_view programPath)
{
    return std::wstring(programPath.substr(0, programPath.find_last_not_of(L".ex") + 1)) + L".ini";
}

int CIniFile::Open(const std::wstring& path)
{
    m_strFileName = path;
    return LoadFile();
}

int CIniFile::LoadFile()
{
    std::optional<std::string> content = m_files.ReadContent(m_strFileName);
    if (!content) {
        return CannotOpen;
    }
    TextReader file(std::move(*content), m_codePage);
    return Load(file);
}

int CIniFile::Load(TextReader& file)
{
    Clear();
    const int result = Parse(file);
    m_bDirty = 0;
    return result;
}

void CIniFile::Clear()
{
    if (m_aKeys.empty()) {
        return;
    }
    m_bDirty = 1;
    m_aSections.clear();
    m_aKeys.clear();
    m_aValues.clear();
    m_index.Reset(0);
    m_sectionNames.clear();
    m_isCurrentNamed = false;
    m_texts.Clear();
}

int CIniFile::Parse(TextReader& file)
{
    const std::uint8_t wasDirty = m_bDirty;
    std::wstring_view line;
    while (file.ReadLine(line)) {
        ParseLine(line);
    }
    m_bDirty = wasDirty;
    return Success;
}

void CIniFile::ParseLine(std::wstring_view line)
{
    if (line.empty()) {
        return;
    }
    if (line.front() == L'[' && line.back() == L']') {
        SetSection(line.substr(1, line.size() - 2));
        return;
    }
    const std::size_t place = line.find(m_strSeparator);
    if (place != std::wstring_view::npos) {
        SetValue(line.substr(0, place), line.substr(std::min(place + SeparatorLength, line.size())));
    }
}

int CIniFile::Save(bool isForced)
{
    if (m_bDirty == 0 && !isForced) {
        return Success;
    }
    // The content is laid out before the file is touched and the entries are put in order after it is written: a failed
    // save changes neither.
    const std::vector<std::uint32_t> order = AscendingOrder(m_aSections, m_aKeys);
    {
        std::string bytes;
        if (!EncodeInOrder(order, bytes) || !SaveContent(m_files, m_strFileName, bytes)) {
            return CannotCreate;
        }
    }
    m_bDirty = 0;
    Reorder(order);
    return Success;
}

bool CIniFile::EncodeInOrder(const std::vector<std::uint32_t>& order, std::string& bytes) const
{
    std::size_t characters = 0;
    for (std::size_t number = 0; number < m_aKeys.size(); ++number) {
        characters += m_aKeys[number].size() + m_strSeparator.size() + m_aValues[number].size() + LineEnd.size();
    }
    bytes.reserve(characters);
    std::wstring_view previous;
    for (const std::uint32_t number : order) {
        const std::wstring_view section = m_aSections[number];
        if (section.data() != previous.data()) {
            if (!previous.empty()) {
                AppendLineEnd(bytes);
            }
            bytes += '[';
            if (!AppendEncoded(m_codePage, section, bytes)) {
                return false;
            }
            bytes += ']';
            AppendLineEnd(bytes);
            previous = section;
        }
        if (!AppendEncoded(m_codePage, m_aKeys[number], bytes) || !AppendEncoded(m_codePage, m_strSeparator, bytes) ||
            !AppendEncoded(m_codePage, m_aValues[number], bytes)) {
            return false;
        }
        AppendLineEnd(bytes);
    }
    return true;
}

void CIniFile::SetSection(std::wstring_view name)
{
    m_strSection = Stripped(name, AroundSections);
    const auto found = m_sectionNames.find(m_strSection);
    m_isCurrentNamed = found != m_sectionNames.end();
    m_currentName = m_isCurrentNamed ? *found : std::wstring_view();
}

void CIniFile::GetValue(std::wstring_view key, std::wstring& value, std::wstring_view defaultValue) const
{
    const std::wstring_view stripped = Stripped(key, AroundKeys);
    const std::uint32_t number = m_bCaseSensitive != 0 ? FindEntry(stripped) : FindIgnoringCase(stripped);
    value = number == EntryIndex::None ? defaultValue : m_aValues[number];
}

void CIniFile::SetValue(std::wstring_view key, std::wstring_view value)
{
    const std::wstring_view stripped = Stripped(key, AroundKeys);
    const std::uint32_t number = FindEntry(stripped);
    const std::uint32_t current = m_bCaseSensitive != 0 ? number : FindIgnoringCase(stripped);
    if (value == (current == EntryIndex::None ? std::wstring_view() : m_aValues[current])) {
        return;
    }
    m_bDirty = 1;
    if (number == EntryIndex::None) {
        AddEntry(stripped, value);
    } else {
        m_aValues[number] = value == m_aKeys[number] ? m_aKeys[number] : m_texts.Keep(value);
    }
}

void CIniFile::SetBoolValue(std::wstring_view key, std::uint8_t value)
{
    SetValue(key, std::to_wstring(value));
}

void CIniFile::SetValues(const std::vector<std::wstring>& keys, const std::vector<std::wstring>& values)
{
    for (std::size_t place = 0; place < std::min(keys.size(), values.size()); ++place) {
        SetValue(keys[place], values[place]);
    }
}

void CIniFile::GetSectionEntries(std::vector<std::wstring>& keys, std::vector<std::wstring>& values) const
{
    keys.clear();
    values.clear();
    if (!m_isCurrentNamed) {
        return;
    }
    for (std::size_t number = 0; number < m_aKeys.size(); ++number) {
        if (m_aSections[number].data() == m_currentName.data()) {
            keys.emplace_back(m_aKeys[number]);
            values.emplace_back(m_aValues[number]);
        }
    }
}

void CIniFile::DeleteSection(std::wstring_view name)
{
    const auto found = m_sectionNames.find(name);
    if (found == m_sectionNames.end()) {
        return;
    }
    std::size_t kept = 0;
    for (std::size_t number = 0; number < m_aKeys.size(); ++number) {
        if (m_aSections[number].data() != found->data()) {
            m_aSections[kept] = m_aSections[number];
            m_aKeys[kept] = m_aKeys[number];
            m_aValues[kept] = m_aValues[number];
            ++kept;
        }
    }
    if (kept == m_aKeys.size()) {
        return;
    }
    m_bDirty = 1;
    m_aSections.resize(kept);
    m_aKeys.resize(kept);
    m_aValues.resize(kept);
    RebuildIndex();
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

std::uint32_t CIniFile::FindEntry(std::wstring_view strippedKey) const
{
    if (!m_isCurrentNamed) {
        return EntryIndex::None;
    }
    const auto section = reinterpret_cast<std::uintptr_t>(m_currentName.data());
    return m_index.Find(m_index.HashOf(section, strippedKey), [&](std::uint32_t number) {
        return m_aSections[number].data() == m_currentName.data() && m_aKeys[number] == strippedKey;
    });
}

std::uint32_t CIniFile::FindIgnoringCase(std::wstring_view strippedKey) const
{
    for (std::uint32_t number = 0; number < m_aKeys.size(); ++number) {
        if (EqualIgnoringCase(m_aSections[number], m_strSection) && EqualIgnoringCase(m_aKeys[number], strippedKey)) {
            return number;
        }
    }
    return EntryIndex::None;
}

std::uint32_t CIniFile::HashOfEntry(std::uint32_t number) const
{
    return m_index.HashOf(reinterpret_cast<std::uintptr_t>(m_aSections[number].data()), m_aKeys[number]);
}

void CIniFile::AddEntry(std::wstring_view strippedKey, std::wstring_view value)
{
    if (!m_isCurrentNamed) {
        m_currentName = *m_sectionNames.insert(m_texts.Keep(m_strSection)).first;
        m_isCurrentNamed = true;
    }
    const std::wstring_view key = m_texts.Keep(strippedKey);
    const auto number = static_cast<std::uint32_t>(m_aKeys.size());
    m_aSections.push_back(m_currentName);
    m_aKeys.push_back(key);
    m_aValues.push_back(value == key ? key : m_texts.Keep(value));
    m_index.Add(HashOfEntry(number), number);
}

void CIniFile::RebuildIndex()
{
    m_index.Reset(m_aKeys.size());
    for (std::uint32_t number = 0; number < m_aKeys.size(); ++number) {
        m_index.Add(HashOfEntry(number), number);
    }
}

void CIniFile::Reorder(const std::vector<std::uint32_t>& order)
{
    if (std::is_sorted(order.begin(), order.end())) {
        return;
    }
    for (TextArray* const array : {&m_aSections, &m_aKeys, &m_aValues}) {
        TextArray ordered;
        ordered.reserve(order.size());
        for (const std::uint32_t number : order) {
            ordered.push_back((*array)[number]);
        }
        array->swap(ordered);
    }
    RebuildIndex();
}

} // namespace sitekeeper
