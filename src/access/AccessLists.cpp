#include "access/AccessLists.h"

#include "access/IniFile.h"
#include "access/KnownUsers.h"
#include "settings/SuiteCatalogue.h"
#include "text/Text.h"

#include <cstdint>
#include <string_view>
#include <utility>

namespace sitekeeper {
namespace {

constexpr const wchar_t* FileName = L"UserDatafile.ini";
constexpr const wchar_t* GeneralSection = L"User List";
constexpr const wchar_t* AdministratorName = L"Administrator";

/// The tools that have a list, by catalogue number. The sibling tools look for sections of exactly the catalogue's
/// names.
constexpr int FirstTool = 5;
constexpr int LastWritten = 9;
constexpr int LastRead = 11;

/// The section of a list whose number is at most `last`; empty when it has none.
std::wstring SectionOf(AccessList list, int last)
{
    if (list == AccessList::General) {
        return GeneralSection;
    }
    const int number = static_cast<int>(list);
    return number >= FirstTool && number <= last ? ToolName(number) : L"";
}

void RebuildGeneralList(CIniFile& file, const Accounts& accounts)
{
    file.DeleteSection(GeneralSection);
    file.SetSection(GeneralSection);
    // An account of that name later replaces the number, which is what a reader of the list gets otherwise. Deliberate.
    file.SetBoolValue(AdministratorName, std::uint8_t{1});
    CollectUsers(accounts, [&file](const std::vector<std::wstring>& names) { file.SetValues(names, names); });
}

} // namespace

AccessLists::AccessLists(const Platform& platform, const InstallationSettings& settings, std::wstring programPath)
    : m_platform(platform), m_settings(settings), m_programPath(std::move(programPath))
{}

template <typename Take>
void AccessLists::WalkAccessList(AccessList list, Rebuild rebuild, Take take) const
{
    const std::wstring path = FilePath();
    const std::wstring section = SectionOf(list, LastRead);
    if (path.empty() || section.empty()) {
        return;
    }
    CIniFile file(m_platform.files, m_platform.codePage, m_programPath);
    file.Open(path);
    if (list == AccessList::General && rebuild == Rebuild::Yes) {
        RebuildGeneralList(file, m_platform.accounts);
    }
    file.SetSection(section);
    file.WalkSectionValues(take);
}

void AccessLists::ReadAccessList(AccessList list, std::vector<std::wstring>& names, Rebuild rebuild) const
{
    names.clear();
    WalkAccessList(list, rebuild, [&names](std::wstring_view name) {
        names.emplace_back(name);
        return true;
    });
}

void AccessLists::WriteAccessList(AccessList list, const std::vector<std::wstring>& names) const
{
    const std::wstring path = FilePath();
    const std::wstring section = SectionOf(list, LastWritten);
    if (path.empty() || section.empty()) {
        return;
    }
    CIniFile file(m_platform.files, m_platform.codePage, m_programPath);
    if (file.Open(path) != CIniFile::Success && m_platform.files.Exists(path)) {
        return; // saved now, the one list would take the place of all of them
    }
    file.DeleteSection(section);
    file.SetSection(section);
    file.SetValues(names, names);
}

Admission AccessLists::IsUserAllowed(const std::wstring& userName, AccessList list) const
{
    if (userName.empty()) {
        return Admission::Refused;
    }
    if (EqualIgnoringCase(userName, AdministratorName)) {
        return Admission::Granted;
    }
    // Nobody keeps the names: copies of a long list took most of the time.
    bool isEmpty = true;
    bool isNamed = false;
    WalkAccessList(list, Rebuild::No, [&](std::wstring_view name) {
        isEmpty = false;
        isNamed = EqualIgnoringCase(name, userName);
        return !isNamed;
    });
    return isEmpty || isNamed ? Admission::Granted : Admission::Refused;
}

std::wstring AccessLists::FilePath() const
{
    const std::wstring folder = m_settings.ReadDatafilesPath();
    return folder.empty() ? folder : folder + FileName;
}

} // namespace sitekeeper
