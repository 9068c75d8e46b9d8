// The rules of the store once more, as plainly as they can be written: linear walks and bubble sorts. What CIniFile
// does is held against it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sitekeeper {

/// A store without a file: it takes and gives bytes. The operations mean what those of CIniFile mean.
class NaiveIniFile
{
public:
    using Texts = std::vector<std::wstring>;

    explicit NaiveIniFile(std::wstring separator = L" = ") : m_separator(std::move(separator)) {}

    void SetCaseSensitive(bool isCaseSensitive) { m_isCaseSensitive = isCaseSensitive; }

    void Load(std::string_view bytes);
    void Parse(std::string_view bytes);
    void Clear();

    /// Gives 0 or 3. `written` is the content of the file when it is written, nothing when it is not touched. Without
    /// `canWrite` the file cannot be.
    int Save(bool isForced, bool canWrite, std::optional<std::string>& written);

    void SetSection(std::wstring_view name);
    [[nodiscard]] std::wstring GetValue(std::wstring_view key, std::wstring_view defaultValue) const;
    void SetValue(std::wstring_view key, std::wstring_view value);
    void SetBoolValue(std::wstring_view key, std::uint8_t value);
    void SetValues(const Texts& keys, const Texts& values);
    void GetSectionEntries(Texts& keys, Texts& values) const;
    void DeleteSection(std::wstring_view name);
    void Sort();
    /// False for a position behind the last.
    bool SwapEntries(std::size_t a, std::size_t b);

    [[nodiscard]] const Texts& Sections() const { return m_sections; }
    [[nodiscard]] const Texts& Keys() const { return m_keys; }
    [[nodiscard]] const Texts& Values() const { return m_values; }

private:
    void ParseLine(const std::wstring& line);
    void BubbleSort(const Texts& texts);
    [[nodiscard]] std::wstring Content() const;

    bool m_isCaseSensitive = true;
    bool m_isDirty = false;
    std::wstring m_separator;
    Texts m_sections;
    Texts m_keys;
    Texts m_values;
    std::wstring m_section;
};

} // namespace sitekeeper
