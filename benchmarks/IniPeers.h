// The store beside libraries that read and write the same kind of file, all behind one face.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace sitekeeper {

/// Names as each side takes them: the libraries in bytes, the program's own lists in wide characters.
struct NameList
{
    std::vector<std::string> narrow;
    std::vector<std::wstring> wide;
};

/// A file as one library holds it in memory.
class LoadedIni
{
public:
    LoadedIni() = default;
    LoadedIni(const LoadedIni&) = delete;
    LoadedIni& operator=(const LoadedIni&) = delete;
    virtual ~LoadedIni() = default;

    [[nodiscard]] virtual bool Holds(const std::string& section, const std::string& name) const = 0;

    /// Deletes the section and sets each name in it anew, to itself.
    virtual void Replace(const std::string& section, const NameList& names) = 0;

    /// Writes everything, by section and key, to memory.
    virtual void SaveSorted() = 0;

    /// What SaveSorted wrote.
    [[nodiscard]] virtual std::string Saved() const = 0;
};

struct IniLibrary
{
    const char* name;
    std::unique_ptr<LoadedIni> (*load)(const std::string& bytes);
};

/// The store itself first, then its peers.
[[nodiscard]] std::span<const IniLibrary> IniLibraries();

/// The sections of the files below, each with a fifth of the entries.
[[nodiscard]] std::span<const char* const> SectionNames();

/// A name like those of accounts. Different numbers up to a million give different names; their order is no order of
/// the numbers.
[[nodiscard]] std::string AccountName(std::size_t number);

/// A file of `count` entries as the program writes them, but shuffled within each section.
[[nodiscard]] std::string ShuffledFile(std::size_t count);

} // namespace sitekeeper
