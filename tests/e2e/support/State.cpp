#include "e2e/support/State.h"

#include "e2e/support/FileTree.h"
#include "e2e/support/Installation.h"
#include "e2e/support/Wide.h"

#include <cstdint>

namespace sitekeeper::e2e {
namespace {

constexpr std::uint64_t HashStart = 14695981039346656037ULL; // FNV-1a
constexpr std::uint64_t HashFactor = 1099511628211ULL;

std::wstring DescribeContent(const std::string& content)
{
    std::uint64_t hash = HashStart;
    for (const char character : content) {
        hash = (hash ^ static_cast<unsigned char>(character)) * HashFactor;
    }
    return L"file, " + std::to_wstring(content.size()) + L" bytes, hash " + std::to_wstring(hash);
}

std::wstring DescribeFile(const std::wstring& path)
{
    const std::string content = ReadWholeFile(path).value_or("");
    if (path.ends_with(L".lnk") && !content.empty()) {
        if (const auto shortcut = ReadShortcut(path)) {
            return Describe(*shortcut);
        }
    }
    return DescribeContent(content);
}

} // namespace

State State::Take()
{
    State state;
    const auto add = [&state](const std::wstring& name, const RegistryValue& value) {
        state.m_items[name] = Describe(value);
    };
    VisitValues(Hive::Machine, MakerKey, add);
    VisitValues(Hive::User, MakerKey, add);
    VisitValues(Hive::Machine, AutoCADKey, add);
    for (const std::wstring& folder : WatchedFolders()) {
        state.AddTree(folder);
    }
    return state;
}

void State::AddTree(const std::wstring& folder)
{
    if (Exists(folder)) {
        m_items[folder] = L"folder";
    }
    VisitTree(folder, [this](const std::wstring& path, EntryKind kind) {
        m_items[path] = kind == EntryKind::Folder ? L"folder" : DescribeFile(path);
    });
}

void State::Set(Hive hive, const std::wstring& key, const std::wstring& name, const RegistryValue& value)
{
    m_items[FullValueName(hive, key, name)] = Describe(value);
}

void State::Set(const std::wstring& path, const Shortcut& shortcut)
{
    m_items[path] = Describe(shortcut);
}

void State::SetEmptyFile(const std::wstring& path)
{
    SetFile(path, {});
}

void State::SetFile(const std::wstring& path, const std::string& content)
{
    m_items[path] = DescribeContent(content);
}

void State::SetFolder(const std::wstring& path)
{
    m_items[path] = L"folder";
}

void State::Remove(const std::wstring& path)
{
    m_items.erase(path);
}

std::string State::ChangesTo(const State& now) const
{
    std::wstring report;
    const auto add = [&report](const wchar_t* what, const std::wstring& name, const std::wstring& description) {
        report.append(what).append(name).append(L"\n    ").append(description).append(L"\n");
    };
    for (const auto& [name, description] : m_items) {
        const auto found = now.m_items.find(name);
        if (found == now.m_items.end()) {
            add(L"missing: ", name, description);
        } else if (found->second != description) {
            add(L"expected: ", name, description);
            add(L"found:    ", name, found->second);
        }
    }
    for (const auto& [name, description] : now.m_items) {
        if (!m_items.contains(name)) {
            add(L"new: ", name, description);
        }
    }
    return ToUtf8(report);
}

} // namespace sitekeeper::e2e
