// The program's own reader and writer of sectioned text files with lines of the form "key = value".
#pragma once

#include "access/EntryIndex.h"
#include "access/TextPool.h"
#include "access/TextReader.h"
#include "platform/CodePage.h"
#include "platform/FileSystem.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace sitekeeper {

/// Holds a whole file in memory as a flat list of entries: section, key, value. Lookups and edits act in one current
/// section. The file is written, sorted, when something changed. A section exists as long as an entry names it.
/// Names are compared with regard to case. Lines that are neither header nor entry are gone after a save.
/// A lookup or an edit costs the same however many entries there are; what the operations mean is a walk from the
/// first entry on.
/// An operation that runs out of memory raises std::bad_alloc and has then changed nothing, neither entries nor file
/// nor whether there is anything to save, but where it says otherwise.
class CIniFile
{
public:
    // Results of reading and writing, the same for all programs of the suite.
    static constexpr int Success = 0;
    static constexpr int CannotOpen = 2;
    static constexpr int CannotCreate = 3;

    /// An empty store for the file named after the program. Keeps the references; they must outlive it.
    CIniFile(FileSystem& files, const CodePage& codePage, std::wstring_view programPath);
    CIniFile(const CIniFile&) = delete;
    CIniFile& operator=(const CIniFile&) = delete;

    /// Saves what changed, silently: a failed save is not reported. Nothing where an error ended what the store was
    /// made for: the file keeps what it had.
    ~CIniFile();

    /// `programPath` without the ".", "e" and "x" characters at its end, whatever they belong to, and with ".ini".
    [[nodiscard]] static std::wstring DefaultFileName(std::wstring_view programPath);

    /// Takes the file's name and loads it, with the results of LoadFile.
    int Open(const std::wstring& path);

    /// Loads the file in place of all entries. CannotOpen when it cannot be opened or read to its end; the entries are
    /// then as they were. Without memory for the entries there are none, and nothing is to be saved.
    int LoadFile();

    /// Takes the entries of an open file in place of all others; nothing is to be saved afterwards. Success. Without
    /// memory for all of them there are none.
    int Load(TextReader& file);

    /// Removes all entries.
    void Clear();

    /// Adds the entries of an open file, section by section, from the current section on; the last header becomes the
    /// current section. Whether there is anything to save is as before. Success. Without memory for all of them the
    /// first ones are added.
    int Parse(TextReader& file);

    /// Writes the file where something is to be saved, or else when `isForced`, and sorts the entries. CannotCreate
    /// when it cannot be written, or a character has no place in the code page; file and entries are then as they were.
    int Save(bool isForced);

    /// The current section from now on: `name` without the characters "[", "]", line feed, blank and tab at its ends.
    void SetSection(std::wstring_view name);

    /// The value of a key in the current section, `defaultValue` where it has none. Keys lose the characters "[", "]",
    /// line feed and tab at their ends, but not blanks, here and in all operations below.
    void GetValue(std::wstring_view key, std::wstring& value, std::wstring_view defaultValue) const;

    /// Sets a key in the current section. An unchanged value changes nothing; so an empty value is never added.
    void SetValue(std::wstring_view key, std::wstring_view value);

    /// Sets a key to the number in decimal: 1 for true.
    void SetBoolValue(std::wstring_view key, std::uint8_t value);

    /// Sets the keys to the values, as far as there are both and there is memory.
    void SetValues(const std::vector<std::wstring>& keys, const std::vector<std::wstring>& values);

    /// Keys and values of the current section, in the order of the entries, in place of what the arrays held.
    void GetSectionEntries(std::vector<std::wstring>& keys, std::vector<std::wstring>& values) const;

    /// Hands on the values of the current section, in the order of the entries, until `take` wants no more (false).
    /// They are good until the store changes.
    template <typename Take>
    void WalkSectionValues(Take take) const
    {
        for (std::size_t number = 0; m_isCurrentNamed && number < m_aKeys.size(); ++number) {
            if (m_aSections[number].data() == m_currentName.data() && !take(m_aValues[number])) {
                return;
            }
        }
    }

    /// Removes all entries of the section that has exactly this name.
    void DeleteSection(std::wstring_view name);

    /// Orders the entries by section, within a section by key, comparing by character code.
    void Sort();

    /// Exchanges two entries. Raises PlatformError (InvalidArgument) for a position behind the last.
    void SwapEntries(std::size_t a, std::size_t b);

private:
    /// Tests reach through it what the program never changes: the case-insensitive mode, the separator, the saving at
    /// the end.
    friend struct IniFileTestAccess;

    static constexpr std::size_t BatchSize = 64;

    using TextArray = std::vector<std::wstring_view>;

    /// Hashes section names like keys, with the index's own number mixed in.
    struct NameHash
    {
        const EntryIndex& index;
        std::size_t operator()(std::wstring_view name) const noexcept { return index.HashOf(0, name); }
    };

    [[nodiscard]] std::uint32_t FindEntry(std::wstring_view strippedKey) const;
    [[nodiscard]] std::uint32_t FindEntry(std::uint32_t hash, std::wstring_view section,
                                          std::wstring_view strippedKey) const;
    [[nodiscard]] std::uint32_t FindIgnoringCase(std::wstring_view strippedKey) const;
    [[nodiscard]] std::uint32_t HashOfEntry(std::uint32_t number) const;
    void NameCurrentSection();
    /// Adds an entry that the index does not know yet.
    void AppendEntry(std::wstring_view strippedKey, std::wstring_view value);
    /// Makes the entries that the index does not know, a batch at most, known to it; those that only set another one's
    /// value do so and are gone. Looking for several at once lets their places in the index come from memory together.
    void IndexNewEntries();
    void ForgetNewEntries() noexcept;
    /// Leaves the first `count` entries, all of which the index knows.
    void Shorten(std::size_t count) noexcept;
    void Reserve(std::size_t count);
    void ParseLines(TextReader& file);
    void ParseLine(std::wstring_view line);
    bool WriteInOrder(const std::vector<std::uint32_t>& order);
    [[nodiscard]] bool EncodeEntries(std::span<const std::uint32_t> numbers, std::string& bytes) const;
    [[nodiscard]] bool EncodeInOrder(const std::vector<std::uint32_t>& order, std::string& bytes) const;
    void Reorder(const std::vector<std::uint32_t>& order);

    std::uint8_t m_bAutoSave = 1;
    std::uint8_t m_bCaseSensitive = 1;
    std::uint8_t m_bDirty = 0;
    std::wstring m_strSeparator = L" = ";
    std::wstring m_strFileName;
    /// Entry i is the section, key and value at i; the three are of one length. The characters are in the pool.
    TextArray m_aSections;
    TextArray m_aKeys;
    TextArray m_aValues;
    std::wstring m_strSection;

    FileSystem& m_files;
    const CodePage& m_codePage;
    /// How many errors were on their way when the store was made.
    int m_errorsBefore;

    // What makes the above quick: each section name stands once in the pool, so that its place there tells sections
    // apart, and the index finds entries by section and key.
    TextPool m_texts;
    EntryIndex m_index;
    std::unordered_set<std::wstring_view, NameHash> m_sectionNames{0, NameHash{m_index}};
    /// The current section's name in the pool; nothing while no value was ever set in it.
    std::wstring_view m_currentName;
    bool m_isCurrentNamed = false;
};

} // namespace sitekeeper
