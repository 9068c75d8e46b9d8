#include "support/NaiveIniFile.h"

#include "support/Utf8CodePage.h"
#include "text/Text.h"

#include <utility>

namespace sitekeeper {
namespace {

std::wstring Trimmed(std::wstring_view text, std::wstring_view characters)
{
    std::wstring trimmed(text);
    while (!trimmed.empty() && characters.find(trimmed.front()) != std::wstring_view::npos) {
        trimmed.erase(0, 1);
    }
    while (!trimmed.empty() && characters.find(trimmed.back()) != std::wstring_view::npos) {
        trimmed.pop_back();
    }
    return trimmed;
}

std::wstring TrimmedKey(std::wstring_view key)
{
    return Trimmed(key, L"[]\n\t");
}

} // namespace

void NaiveIniFile::Load(std::string_view bytes)
{
    Clear();
    Parse(bytes);
    m_isDirty = false;
}

void NaiveIniFile::Parse(std::string_view bytes)
{
    const bool wasDirty = m_isDirty;
    std::string line;
    for (std::size_t place = 0; place < bytes.size(); ++place) {
        if (bytes[place] != '\n') {
            line += bytes[place];
        }
        const bool isEnded = bytes[place] == '\n';
        if (isEnded && !line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        if (isEnded || place + 1 == bytes.size()) {
            std::wstring text;
            Utf8CodePage().Decode(line, text);
            ParseLine(text);
            line.clear();
        }
    }
    m_isDirty = wasDirty;
}

void NaiveIniFile::ParseLine(const std::wstring& line)
{
    if (line.empty()) {
        return;
    }
    if (line.front() == L'[' && line.back() == L']') {
        SetSection(line.substr(1, line.size() - 2));
        return;
    }
    const std::size_t place = line.find(m_separator);
    if (place != std::wstring::npos) {
        SetValue(line.substr(0, place), place + 3 <= line.size() ? line.substr(place + 3) : std::wstring());
    }
}

void NaiveIniFile::Clear()
{
    if (m_keys.empty()) {
        return;
    }
    m_isDirty = true;
    m_sections.clear();
    m_keys.clear();
    m_values.clear();
}

int NaiveIniFile::Save(bool isForced, bool canWrite, std::optional<std::string>& written)
{
    written.reset();
    if (!m_isDirty && !isForced) {
        return 0;
    }
    NaiveIniFile sorted = *this; // a save that fails leaves the order as it was
    sorted.Sort();
    std::string bytes;
    if (!canWrite || !Utf8CodePage().Encode(sorted.Content(), bytes)) {
        return 3;
    }
    sorted.m_isDirty = false;
    *this = sorted;
    written = bytes;
    return 0;
}

std::wstring NaiveIniFile::Content() const
{
    std::wstring content;
    std::wstring previous;
    for (std::size_t place = 0; place < m_keys.size(); ++place) {
        if (m_sections[place] != previous) {
            if (!previous.empty()) {
                content += L"\r\n";
            }
            content += L"[" + m_sections[place] + L"]\r\n";
            previous = m_sections[place];
        }
        content += m_keys[place] + m_separator + m_values[place] + L"\r\n";
    }
    return content;
}

void NaiveIniFile::SetSection(std::wstring_view name)
{
    m_section = Trimmed(name, L"[]\n \t");
}

std::wstring NaiveIniFile::GetValue(std::wstring_view key, std::wstring_view defaultValue) const
{
    const std::wstring wanted = TrimmedKey(key);
    for (std::size_t place = 0; place < m_keys.size(); ++place) {
        std::wstring texts[] = {m_sections[place], m_keys[place], m_section, wanted};
        if (!m_isCaseSensitive) {
            for (std::wstring& text : texts) {
                text = ToLowerCase(text);
            }
        }
        if (texts[0] == texts[2] && texts[1] == texts[3]) {
            return m_values[place];
        }
    }
    return std::wstring(defaultValue);
}

void NaiveIniFile::SetValue(std::wstring_view key, std::wstring_view value)
{
    const std::wstring wanted = TrimmedKey(key);
    if (GetValue(wanted, L"") == value) {
        return;
    }
    m_isDirty = true;
    for (std::size_t place = 0; place < m_keys.size(); ++place) {
        if (m_sections[place] == m_section && m_keys[place] == wanted) {
            m_values[place] = value;
            return;
        }
    }
    m_sections.push_back(m_section);
    m_keys.push_back(wanted);
    m_values.emplace_back(value);
}

void NaiveIniFile::SetBoolValue(std::wstring_view key, std::uint8_t value)
{
    SetValue(key, std::to_wstring(static_cast<int>(value)));
}

void NaiveIniFile::SetValues(const Texts& keys, const Texts& values)
{
    for (std::size_t place = 0; place < keys.size() && place < values.size(); ++place) {
        SetValue(keys[place], values[place]);
    }
}

void NaiveIniFile::GetSectionEntries(Texts& keys, Texts& values) const
{
    keys.clear();
    values.clear();
    for (std::size_t place = 0; place < m_keys.size(); ++place) {
        if (m_sections[place] == m_section) {
            keys.push_back(m_keys[place]);
            values.push_back(m_values[place]);
        }
    }
}

void NaiveIniFile::DeleteSection(std::wstring_view name)
{
    std::size_t place = 0;
    while (place < m_keys.size()) {
        if (m_sections[place] != name) {
            ++place;
            continue;
        }
        const auto offset = static_cast<std::ptrdiff_t>(place);
        m_sections.erase(m_sections.begin() + offset);
        m_keys.erase(m_keys.begin() + offset);
        m_values.erase(m_values.begin() + offset);
        m_isDirty = true;
    }
}

void NaiveIniFile::Sort()
{
    BubbleSort(m_keys);
    BubbleSort(m_sections);
}

void NaiveIniFile::BubbleSort(const Texts& texts)
{
    for (bool hasSwapped = true; hasSwapped;) {
        hasSwapped = false;
        for (std::size_t place = 1; place < texts.size(); ++place) {
            if (texts[place - 1] > texts[place]) {
                hasSwapped = SwapEntries(place - 1, place);
            }
        }
    }
}

bool NaiveIniFile::SwapEntries(std::size_t a, std::size_t b)
{
    if (a >= m_keys.size() || b >= m_keys.size()) {
        return false;
    }
    std::swap(m_sections[a], m_sections[b]);
    std::swap(m_keys[a], m_keys[b]);
    std::swap(m_values[a], m_values[b]);
    return true;
}

} // namespace sitekeeper
