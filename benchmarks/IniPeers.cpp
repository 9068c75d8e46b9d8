#include "IniPeers.h"

#include "access/IniFile.h"
#include "access/TextReader.h"
#include "platform/FileSystem.h"
#include "support/Utf8CodePage.h"

#include <algorithm>
#include <boost/property_tree/ini_parser.hpp>
#include <boost/property_tree/ptree.hpp>
#include <glib.h>
#include <ini.h>
#include <optional>
#include <SimpleIni.h>
#include <sstream>
#include <stdexcept>
#include <tuple>

namespace sitekeeper {
namespace {

std::wstring Widened(const std::string& text)
{
    return {text.begin(), text.end()};
}

void AppendHeader(std::string& bytes, std::string_view section)
{
    bytes.append(bytes.empty() ? "[" : "\r\n[").append(section).append("]\r\n");
}

void AppendEntry(std::string& bytes, std::string_view key, std::string_view value)
{
    bytes.append(key).append(" = ").append(value).append("\r\n");
}

/// A disk that holds what was saved last, and nothing besides: the peers write to a text, too.
class OneFileDisk final : public FileSystem
{
public:
    [[nodiscard]] bool Exists(const std::wstring& /*path*/) const override { return false; }
    [[nodiscard]] std::optional<std::wstring> FullPath(const std::wstring& path) const override { return path; }
    void Search(const std::wstring& /*pattern*/, const std::function<void(const FoundFile&)>& /*take*/) const override
    {}
    bool MakeFolder(const std::wstring& /*path*/) override { return false; }
    [[nodiscard]] std::optional<std::string> ReadContent(const std::wstring& /*path*/) const override
    {
        return m_content;
    }
    [[nodiscard]] std::unique_ptr<OutputFile> OpenForWriting(const std::wstring& /*path*/) override { return nullptr; }
    [[nodiscard]] std::unique_ptr<OutputFile> MakeFileLike(const std::wstring& /*path*/,
                                                           const std::wstring& /*model*/) override
    {
        return std::make_unique<Output>(m_content);
    }
    bool MoveOver(const std::wstring& /*from*/, const std::wstring& /*to*/) override { return true; }
    bool MakeEmptyFile(const std::wstring& /*path*/) override { return true; }
    bool RemoveFile(const std::wstring& /*path*/) override { return true; }

private:
    class Output final : public OutputFile
    {
    public:
        explicit Output(std::string& content) : m_content(content) {}
        bool Write(std::string_view bytes) override
        {
            m_content += bytes;
            return true;
        }
        bool EndHere() override { return true; }
        bool Flush() override { return true; }

    private:
        std::string& m_content;
    };

    std::string m_content;
};

class OurIni final : public LoadedIni
{
public:
    explicit OurIni(const std::string& bytes)
    {
        TextReader file(bytes, m_codePage);
        m_store.emplace(m_disk, m_codePage, L"C:\\List.exe");
        m_store->Load(file);
    }
    [[nodiscard]] bool Holds(const std::string& section, const std::string& name) const override
    {
        m_store->SetSection(Widened(section));
        std::wstring value;
        m_store->GetValue(Widened(name), value, L"");
        return !value.empty();
    }
    void Replace(const std::string& section, const NameList& names) override
    {
        const std::wstring wide = Widened(section);
        m_store->DeleteSection(wide);
        m_store->SetSection(wide);
        m_store->SetValues(names.wide, names.wide);
    }
    void SaveSorted() override { m_store.reset(); } // its end is what saves it in the program, too
    [[nodiscard]] std::string Saved() const override { return m_disk.ReadContent(L"").value_or(""); }

private:
    OneFileDisk m_disk;
    Utf8CodePage m_codePage;
    mutable std::optional<CIniFile> m_store; // a lookup moves the current section
};

/// inih only reads: it hands each entry to a handler, and what happens to it then is the caller's own.
class InihEntries final : public LoadedIni
{
public:
    explicit InihEntries(const std::string& bytes) { ini_parse_string(bytes.c_str(), &Keep, this); }
    [[nodiscard]] bool Holds(const std::string& section, const std::string& name) const override
    {
        return std::any_of(m_entries.begin(), m_entries.end(),
                           [&](const Entry& entry) { return entry.key == name && entry.section == section; });
    }
    void Replace(const std::string& section, const NameList& names) override
    {
        std::erase_if(m_entries, [&section](const Entry& entry) { return entry.section == section; });
        for (const std::string& name : names.narrow) {
            m_entries.push_back({section, name, name});
        }
    }
    void SaveSorted() override
    {
        std::sort(m_entries.begin(), m_entries.end(), [](const Entry& left, const Entry& right) {
            return std::tie(left.section, left.key) < std::tie(right.section, right.key);
        });
        const std::string* previous = nullptr;
        for (const Entry& entry : m_entries) {
            if (previous == nullptr || *previous != entry.section) {
                AppendHeader(m_saved, entry.section);
                previous = &entry.section;
            }
            AppendEntry(m_saved, entry.key, entry.value);
        }
    }
    [[nodiscard]] std::string Saved() const override { return m_saved; }

private:
    struct Entry
    {
        std::string section;
        std::string key;
        std::string value;
    };

    static int Keep(void* self, const char* section, const char* key, const char* value)
    {
        static_cast<InihEntries*>(self)->m_entries.push_back({section, key, value});
        return 1;
    }

    std::vector<Entry> m_entries;
    std::string m_saved;
};

/// SimpleIni keeps its keys in order already. It saves in the order of loading, so the sorted text is written here.
class SimpleIniFile final : public LoadedIni
{
public:
    explicit SimpleIniFile(const std::string& bytes)
    {
        m_file.SetMultiKey(false);
        m_file.LoadData(bytes);
    }
    [[nodiscard]] bool Holds(const std::string& section, const std::string& name) const override
    {
        return m_file.GetValue(section.c_str(), name.c_str()) != nullptr;
    }
    void Replace(const std::string& section, const NameList& names) override
    {
        m_file.Delete(section.c_str(), nullptr);
        for (const std::string& name : names.narrow) {
            m_file.SetValue(section.c_str(), name.c_str(), name.c_str());
        }
    }
    void SaveSorted() override
    {
        CSimpleIniCaseA::TNamesDepend sections;
        m_file.GetAllSections(sections);
        sections.sort(CSimpleIniCaseA::Entry::KeyOrder());
        for (const auto& section : sections) {
            AppendHeader(m_saved, section.pItem);
            for (const auto& [key, value] : *m_file.GetSection(section.pItem)) {
                AppendEntry(m_saved, key.pItem, value);
            }
        }
    }
    [[nodiscard]] std::string Saved() const override { return m_saved; }

private:
    CSimpleIniCaseA m_file;
    std::string m_saved;
};

/// GLib keeps the order of loading, so the sorted text is written here.
class GLibKeyFile final : public LoadedIni
{
public:
    explicit GLibKeyFile(const std::string& bytes)
    {
        g_key_file_load_from_data(m_file.get(), bytes.data(), bytes.size(), G_KEY_FILE_NONE, nullptr);
    }
    [[nodiscard]] bool Holds(const std::string& section, const std::string& name) const override
    {
        return g_key_file_has_key(m_file.get(), section.c_str(), name.c_str(), nullptr) != 0;
    }
    void Replace(const std::string& section, const NameList& names) override
    {
        g_key_file_remove_group(m_file.get(), section.c_str(), nullptr);
        for (const std::string& name : names.narrow) {
            g_key_file_set_value(m_file.get(), section.c_str(), name.c_str(), name.c_str());
        }
    }
    void SaveSorted() override
    {
        gsize sectionCount = 0;
        const Strings sections(g_key_file_get_groups(m_file.get(), &sectionCount), &g_strfreev);
        SortTexts(sections.get(), sectionCount);
        for (gsize place = 0; place < sectionCount; ++place) {
            SaveSection(sections.get()[place]);
        }
    }
    [[nodiscard]] std::string Saved() const override { return m_saved; }

private:
    using Strings = std::unique_ptr<gchar*, decltype(&g_strfreev)>;
    using String = std::unique_ptr<gchar, decltype(&g_free)>;

    static void SortTexts(gchar** texts, gsize count)
    {
        std::sort(texts, texts + count,
                  [](const gchar* left, const gchar* right) { return std::string_view(left) < right; });
    }
    void SaveSection(const gchar* section)
    {
        AppendHeader(m_saved, section);
        gsize count = 0;
        const Strings keys(g_key_file_get_keys(m_file.get(), section, &count, nullptr), &g_strfreev);
        SortTexts(keys.get(), count);
        for (gsize place = 0; place < count; ++place) {
            const gchar* const key = keys.get()[place];
            AppendEntry(m_saved, key, String(g_key_file_get_value(m_file.get(), section, key, nullptr), &g_free).get());
        }
    }

    std::unique_ptr<GKeyFile, decltype(&g_key_file_unref)> m_file{g_key_file_new(), &g_key_file_unref};
    std::string m_saved;
};

class BoostTree final : public LoadedIni
{
public:
    explicit BoostTree(const std::string& bytes)
    {
        std::istringstream stream(bytes);
        boost::property_tree::read_ini(stream, m_tree);
    }
    [[nodiscard]] bool Holds(const std::string& section, const std::string& name) const override
    {
        const auto found = m_tree.find(section);
        return found != m_tree.not_found() && found->second.find(name) != found->second.not_found();
    }
    void Replace(const std::string& section, const NameList& names) override
    {
        m_tree.erase(section);
        Tree& entries = m_tree.push_back({section, Tree()})->second;
        for (const std::string& name : names.narrow) {
            entries.push_back({name, Tree(name)});
        }
    }
    void SaveSorted() override
    {
        constexpr auto ByName = [](const Tree::value_type& left, const Tree::value_type& right) {
            return left.first < right.first;
        };
        m_tree.sort(ByName);
        for (auto& section : m_tree) {
            section.second.sort(ByName);
        }
        boost::property_tree::write_ini(m_saved, m_tree);
    }
    [[nodiscard]] std::string Saved() const override { return m_saved.str(); }

private:
    using Tree = boost::property_tree::ptree;

    Tree m_tree;
    std::ostringstream m_saved;
};

template <typename Library>
std::unique_ptr<LoadedIni> Load(const std::string& bytes)
{
    return std::make_unique<Library>(bytes);
}

constexpr const char* Sections[] = {"User List", "Ledger Composer", "SiteKeeper", "SheetWriter", "Norm Keeper"};

/// Every bit of `number` reaches every bit of the result.
std::uint64_t Scattered(std::uint64_t number)
{
    number = (number ^ (number >> 30U)) * 0xBF58'476D'1CE4'E5B9U;
    number = (number ^ (number >> 27U)) * 0x94D0'49BB'1331'11EBU;
    return number ^ (number >> 31U);
}

} // namespace

std::span<const IniLibrary> IniLibraries()
{
    static constexpr IniLibrary Libraries[] = {
        {"ours", &Load<OurIni>},      {"inih", &Load<InihEntries>}, {"SimpleIni", &Load<SimpleIniFile>},
        {"GLib", &Load<GLibKeyFile>}, {"Boost", &Load<BoostTree>},
    };
    return Libraries;
}

std::span<const char* const> SectionNames()
{
    return Sections;
}

std::string AccountName(std::size_t number)
{
    constexpr const char* Syllables[] = {"an", "ber", "chi", "dor", "el",  "fa", "gun", "har",
                                         "is", "jo",  "ka",  "lin", "mar", "no", "ol",  "pet"};
    std::string name;
    const std::uint64_t chance = Scattered(number + 1);
    const std::uint64_t length = 2 + (chance >> 60U) % 2;
    for (std::uint64_t place = 0; place < length; ++place) {
        name += Syllables[(chance >> (4 * place)) % std::size(Syllables)];
    }
    return name + std::to_string(number * 0x9E37'79B1U % 0x10'0000U); // an odd factor: no number comes twice
}

std::string ShuffledFile(std::size_t count)
{
    std::string bytes;
    bytes.reserve(count * 36 + 200);
    const std::size_t share = count / std::size(Sections);
    for (std::size_t section = 0; section < std::size(Sections); ++section) {
        AppendHeader(bytes, Sections[section]);
        for (std::size_t number = section * share; number < (section + 1) * share; ++number) {
            const std::string name = AccountName(number);
            AppendEntry(bytes, name, name);
        }
    }
    return bytes;
}

} // namespace sitekeeper
