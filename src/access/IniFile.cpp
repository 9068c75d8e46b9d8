#include "access/IniFile.h"

#include "access/EntryOrder.h"
#include "text/Text.h"

#include <algorithm>
#include <array>
#include <exception>
#include <optional>
#include <utility>

namespace sitekeeper {
namespace {

constexpr auto IsAroundKeys = [](wchar_t character) noexcept { // the blank is none of them, deliberately
    return character == L'[' || character == L']' || character == L'\n' || character == L'\t';
};
constexpr auto IsAroundSections = [](wchar_t character) noexcept {
    return character == L' ' || IsAroundKeys(character);
};

/// The length of the separator that files have had from the start. Values begin this far behind the place where the
/// separator was found, whatever separator that was. Deliberate.
constexpr std::size_t SeparatorLength = 3;

constexpr std::size_t SmallestRoom = 16;

template <typename IsAround>
std::wstring_view Stripped(std::wstring_view text, IsAround isAround) noexcept
{
    while (!text.empty() && isAround(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isAround(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

/// The same for entries of one section, and for them alone.
std::uintptr_t SectionId(std::wstring_view keptName) noexcept
{
    return reinterpret_cast<std::uintptr_t>(keptName.data());
}

} // namespace

CIniFile::CIniFile(FileSystem& files, const CodePage& codePage, std::wstring_view programPath)
    : m_strFileName(DefaultFileName(programPath)), m_files(files), m_codePage(codePage),
      m_errorsBefore(std::uncaught_exceptions())
{}

CIniFile::~CIniFile()
{
    // An error has cut off what was being changed: half a list, or none, would let in who is not to be.
    const bool isCutOff = std::uncaught_exceptions() > m_errorsBefore;
    if (m_bAutoSave == 0 || m_bDirty == 0 || isCutOff) {
        return;
    }
    try {
        // As Save does, but nobody sees the entries in order any more.
        WriteInOrder(AscendingOrder(m_aSections, m_aKeys));
        // Without memory nothing can be saved, and nobody is told of a failed save.
    } catch (...) { // NOLINT(bugprone-empty-catch)
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
    m_bDirty = 0;
    try {
        return Parse(file);
    } catch (...) {
        // Saved later, a part of the file would take the place of all of it.
        Clear();
        m_bDirty = 0;
        throw;
    }
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
    m_index.Clear();
    m_sectionNames.clear();
    m_isCurrentNamed = false;
    m_texts.Clear();
}

int CIniFile::Parse(TextReader& file)
{
    const std::uint8_t wasDirty = m_bDirty;
    try {
        ParseLines(file);
    } catch (...) {
        ForgetNewEntries();
        m_bDirty = wasDirty;
        throw;
    }
    m_bDirty = wasDirty;
    return Success;
}

void CIniFile::ParseLines(TextReader& file)
{
    Reserve(m_aKeys.size() + file.LikelyEntries());
    std::wstring_view line;
    while (file.ReadLine(line)) {
        ParseLine(line);
        if (m_aKeys.size() - m_index.Count() == BatchSize) {
            IndexNewEntries();
        }
    }
    IndexNewEntries();
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
    if (place == std::wstring_view::npos) {
        return;
    }
    const std::wstring_view key = line.substr(0, place);
    const std::wstring_view value = line.substr(std::min(place + SeparatorLength, line.size()));
    if (m_bCaseSensitive != 0) {
        NameCurrentSection();
        AppendEntry(Stripped(key, IsAroundKeys), value);
    } else {
        SetValue(key, value);
    }
}

void CIniFile::IndexNewEntries()
{
    const std::size_t first = m_index.Count();
    std::array<std::uint32_t, BatchSize> hashes{};
    for (std::size_t number = first; number < m_aKeys.size(); ++number) {
        hashes[number - first] = m_index.HashOf(SectionId(m_aSections[number]), m_aKeys[number]);
        m_index.Prefetch(hashes[number - first]);
    }
    // The same as setting each value in turn, with entries in place of arguments.
    std::size_t kept = first;
    for (std::size_t number = first; number < m_aKeys.size(); ++number) {
        const std::uint32_t hash = hashes[number - first];
        const std::uint32_t found = FindEntry(hash, m_aSections[number], m_aKeys[number]);
        if (found != EntryIndex::None) {
            m_aValues[found] = m_aValues[number];
        } else if (!m_aValues[number].empty()) {
            m_index.Add(hash, static_cast<std::uint32_t>(kept));
            if (kept != number) {
                m_aSections[kept] = m_aSections[number];
                m_aKeys[kept] = m_aKeys[number];
                m_aValues[kept] = m_aValues[number];
            }
            ++kept;
        }
    }
    Shorten(kept);
}

void CIniFile::ForgetNewEntries() noexcept
{
    Shorten(m_index.Count());
}

void CIniFile::Shorten(std::size_t count) noexcept
{
    m_aSections.resize(count);
    m_aKeys.resize(count);
    m_aValues.resize(count);
}

void CIniFile::SetSection(std::wstring_view name)
{
    m_strSection = Stripped(name, IsAroundSections);
    const auto found = m_sectionNames.find(m_strSection);
    m_isCurrentNamed = found != m_sectionNames.end();
    m_currentName = m_isCurrentNamed ? *found : std::wstring_view();
}

void CIniFile::GetValue(std::wstring_view key, std::wstring& value, std::wstring_view defaultValue) const
{
    const std::wstring_view stripped = Stripped(key, IsAroundKeys);
    const std::uint32_t number = m_bCaseSensitive != 0 ? FindEntry(stripped) : FindIgnoringCase(stripped);
    value = number == EntryIndex::None ? defaultValue : m_aValues[number];
}

void CIniFile::SetValue(std::wstring_view key, std::wstring_view value)
{
    const std::wstring_view stripped = Stripped(key, IsAroundKeys);
    NameCurrentSection();
    const std::uint32_t hash = m_index.HashOf(SectionId(m_currentName), stripped);
    const std::uint32_t number = FindEntry(hash, m_currentName, stripped);
    const std::uint32_t current = m_bCaseSensitive != 0 ? number : FindIgnoringCase(stripped);
    if (value == (current == EntryIndex::None ? std::wstring_view() : m_aValues[current])) {
        return;
    }
    if (number == EntryIndex::None) {
        m_index.Reserve(m_aKeys.size() + 1);
        AppendEntry(stripped, value);
        m_index.Add(hash, static_cast<std::uint32_t>(m_aKeys.size() - 1));
    } else {
        m_aValues[number] = value == m_aKeys[number] ? m_aKeys[number] : m_texts.Keep(value);
    }
    m_bDirty = 1;
}

void CIniFile::SetBoolValue(std::wstring_view key, std::uint8_t value)
{
    SetValue(key, std::to_wstring(value));
}

void CIniFile::SetValues(const std::vector<std::wstring>& keys, const std::vector<std::wstring>& values)
{
    NameCurrentSection();
    const std::size_t count = std::min(keys.size(), values.size());
    for (std::size_t place = 0; place < count; ++place) {
        if (place % BatchSize == 0) {
            for (std::size_t ahead = place; ahead < std::min(place + BatchSize, count); ++ahead) {
                m_index.Prefetch(m_index.HashOf(SectionId(m_currentName), Stripped(keys[ahead], IsAroundKeys)));
            }
        }
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

std::uint32_t CIniFile::FindEntry(std::wstring_view strippedKey) const
{
    return m_isCurrentNamed
               ? FindEntry(m_index.HashOf(SectionId(m_currentName), strippedKey), m_currentName, strippedKey)
               : EntryIndex::None;
}

std::uint32_t CIniFile::FindEntry(std::uint32_t hash, std::wstring_view section, std::wstring_view strippedKey) const
{
    return m_index.Find(hash, [&](std::uint32_t number) {
        return m_aSections[number].data() == section.data() && m_aKeys[number] == strippedKey;
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
    return m_index.HashOf(SectionId(m_aSections[number]), m_aKeys[number]);
}

void CIniFile::NameCurrentSection()
{
    if (!m_isCurrentNamed) {
        m_currentName = *m_sectionNames.insert(m_texts.Keep(m_strSection)).first;
        m_isCurrentNamed = true;
    }
}

void CIniFile::AppendEntry(std::wstring_view strippedKey, std::wstring_view value)
{
    if (m_aValues.size() == m_aValues.capacity()) {
        Reserve(std::max(SmallestRoom, m_aValues.size() * 2));
    }
    const std::wstring_view key = m_texts.Keep(strippedKey);
    const std::wstring_view keptValue = value == key ? key : m_texts.Keep(value);
    // There is room: from here on nothing fails, and the three stay of one length.
    m_aSections.push_back(m_currentName);
    m_aKeys.push_back(key);
    m_aValues.push_back(keptValue);
}

void CIniFile::Reserve(std::size_t count)
{
    m_index.Reserve(count);
    m_aSections.reserve(count);
    m_aKeys.reserve(count);
    m_aValues.reserve(count);
}

} // namespace sitekeeper
