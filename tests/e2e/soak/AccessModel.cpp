// The model's access lists: who is let in, and what the dialog does with names.
#include "e2e/soak/Model.h"
#include "e2e/support/Wide.h"

#include <algorithm>

namespace sitekeeper::e2e {
namespace {

constexpr const wchar_t* Everyone = L"Everyone";

Names::const_iterator FindName(const Names& names, const std::wstring& name)
{
    return std::find_if(names.begin(), names.end(),
                        [&name](const std::wstring& each) { return EqualNames(each, name); });
}

bool Has(const Names& names, const std::wstring& name)
{
    return FindName(names, name) != names.end();
}

void RemoveName(Names& names, const std::wstring& name)
{
    if (const auto found = FindName(names, name); found != names.end()) {
        names.erase(found);
    }
}

} // namespace

bool Model::IsAdmitted() const
{
    AccessNames lists = StoredLists();
    const Names& admitted = lists[AccessControl::SiteKeeper];
    return admitted.empty() || EqualNames(m_userName, L"Administrator") || Has(admitted, m_userName);
}

bool Model::CanWriteLists() const
{
    return std::ranges::find(RealFolders(), ListFolder()) != RealFolders().end();
}

AccessNames Model::StoredLists() const
{
    const auto found = m_files.find(ListFolder());
    return found == m_files.end() ? AccessNames() : found->second;
}

void Model::Rebuild()
{
    m_lists[AccessControl::Users].clear();
    if (!ListFolder().empty()) {
        m_lists[AccessControl::Users] = m_accounts;
        if (CanWriteLists()) {
            m_files[ListFolder()][AccessControl::Users] = m_accounts;
        }
    }
}

void Model::OpenAccess()
{
    m_place = Place::UserAccess;
    m_newUser.clear();
    m_lists = StoredLists();
    if (m_lists[AccessControl::Users].empty()) {
        Rebuild();
    }
    ShowEveryoneInAll();
}

void Model::ShowEveryoneInAll()
{
    for (const AccessControl list : AccessListControls) {
        Names& names = m_lists[list];
        if (names.empty()) {
            names.emplace_back(Everyone);
        } else if (names.size() >= 2) {
            RemoveName(names, Everyone);
        }
    }
}

void Model::InsertMissing(AccessControl list, const Names& names)
{
    for (const std::wstring& name : names) {
        if (!Has(m_lists[list], name)) {
            m_lists[list].push_back(name);
        }
    }
}

void Model::Add(const std::wstring& name)
{
    m_newUser = name;
    const std::size_t first = name.find_first_not_of(L' ');
    if (first == std::wstring::npos) {
        return;
    }
    const std::wstring trimmed = name.substr(first, name.find_last_not_of(L' ') + 1 - first);
    if (!Has(m_lists[AccessControl::Users], trimmed)) {
        m_lists[AccessControl::Users].push_back(trimmed);
        m_newUser.clear();
    }
}

void Model::Refresh()
{
    Rebuild();
    ShowEveryoneInAll();
}

void Model::Move(AccessControl from, const Names& names, AccessControl to)
{
    if (from == to) {
        return;
    }
    InsertMissing(to, names);
    Delete(from, names);
}

void Model::Copy(const Names& names)
{
    m_clipboard = names;
}

void Model::Cut(AccessControl list, const Names& names)
{
    Copy(names);
    Delete(list, names);
}

void Model::Delete(AccessControl list, const Names& names)
{
    if (list != AccessControl::Users) { // known users stay known
        for (const std::wstring& name : names) {
            RemoveName(m_lists[list], name);
        }
    }
    ShowEveryoneInAll();
}

void Model::Paste(AccessControl list)
{
    Names known;
    for (const std::wstring& name : m_clipboard) {
        const Names& users = m_lists[AccessControl::Users];
        if (const auto found = FindName(users, name); found != users.end()) {
            known.push_back(*found);
        }
    }
    InsertMissing(list, known);
    ShowEveryoneInAll();
}

void Model::CloseAccess(int button)
{
    m_place = Place::Main;
    if (button != IDOK || !CanWriteLists()) {
        return;
    }
    AccessNames& file = m_files[ListFolder()];
    for (const AccessControl list : AccessListControls) {
        file[list] = m_lists[list];
        std::erase(file[list], Everyone);
    }
}

} // namespace sitekeeper::e2e
