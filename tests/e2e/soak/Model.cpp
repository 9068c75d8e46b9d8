#include "e2e/soak/Model.h"

#include "e2e/support/FileTree.h"
#include "e2e/support/Installation.h"
#include "e2e/support/Wide.h"

#include <set>
#include <utility>

namespace sitekeeper::e2e {
namespace {

std::wstring WithBackslash(const std::wstring& path)
{
    return path.empty() || path.ends_with(L'\\') ? path : path + L"\\";
}

/// In the order of the file: of the sections' names.
constexpr std::pair<AccessControl, const char*> Sections[] = {
    {AccessControl::LedgerComposer, "Ledger Composer"},
    {AccessControl::NormKeeper, "Norm Keeper"},
    {AccessControl::SheetWriter, "SheetWriter"},
    {AccessControl::SiteKeeper, "SiteKeeper"},
    {AccessControl::Users, "User List"},
};

constexpr const wchar_t* ListFileName = L"UserDatafile.ini";

/// The names used here all lie in the first 256 characters, which are the same in the file's code page.
std::string Narrow(const std::wstring& text)
{
    std::string narrow;
    for (const wchar_t character : text) {
        narrow += static_cast<char>(character);
    }
    return narrow;
}

/// A list file as the program writes it.
std::string ContentOf(const AccessNames& lists)
{
    std::string content;
    for (const auto& [list, section] : Sections) {
        const auto names = lists.find(list);
        if (names == lists.end() || names->second.empty()) {
            continue;
        }
        content += std::string(content.empty() ? "" : "\r\n") + "[" + section + "]\r\n";
        for (const std::wstring& name : std::set<std::wstring>(names->second.begin(), names->second.end())) {
            content += Narrow(name) + " = " + Narrow(name) + "\r\n";
        }
    }
    return content;
}

} // namespace

Model::Model(std::wstring userName, Names accounts) : m_userName(std::move(userName)), m_accounts(std::move(accounts))
{}

const std::vector<std::wstring>& Model::SomeFolders()
{
    static const std::vector<std::wstring> folders = {
        L"C:\\Suite\\",          L"C:\\Suite\\Datafiles\\",       L"C:\\NewServer\\Suite\\",          L"C:\\NewServer",
        L"C:\\Suite\\Datafiles", L"C:\\Elsewhere\\Büro Müller\\", L"C:\\Elsewhere\\No such folder\\", L""};
    return folders;
}

const std::vector<std::wstring>& Model::RealFolders()
{
    static const std::vector<std::wstring> folders = {L"C:\\Suite\\", L"C:\\Suite\\Datafiles\\", L"C:\\NewServer\\",
                                                      L"C:\\NewServer\\Suite\\", L"C:\\Elsewhere\\Büro Müller\\"};
    return folders;
}

const Names& Model::SomeNames()
{
    static const Names names = {L"alice", L"bob",        L"Carol",  L"dörte",    L"Zoë",
                                L"ALICE", L"max muster", L"  eve ", L"Everyone", L" "};
    return names;
}

// --- the program and its main dialog ---------------------------------------------------------------------------------

void Model::AdmitEverybody()
{
    AccessNames& lists = m_files[ListFolder()];
    lists.erase(AccessControl::SiteKeeper);
    WriteWholeFile(ListFolder() + ListFileName, ContentOf(lists));
}

void Model::Start()
{
    m_place = Place::Main;
    m_shown = {WithBackslash(m_stored.program), WithBackslash(m_stored.application), WithBackslash(m_stored.datafiles)};
    if (m_shown.program.empty()) {
        m_shown.program = L"C:\\Suite\\"; // above the program's own folder
    }
    if (m_shown.application.empty()) {
        m_shown.application = m_shown.program;
    }
    if (m_shown.datafiles.empty()) {
        m_shown.datafiles = m_shown.application + L"Datafiles\\";
    }
    Exchange();
}

void Model::BrowseApplication(const std::wstring& choice)
{
    Exchange();
    m_members.application = WithBackslash(choice);
    m_shown = m_members;
}

void Model::BrowseDatafiles(const std::wstring& choice)
{
    m_members.datafiles = WithBackslash(choice); // what was typed is lost
    m_shown = m_members;
}

void Model::SelectProgram(const std::wstring& choice)
{
    Exchange();
    m_members.program = WithBackslash(choice);
    if (!choice.empty()) {
        m_stored.program = m_members.program;
        if (m_members.application.empty()) {
            m_members.application = m_members.program;
        }
        if (m_members.datafiles.empty()) {
            m_members.datafiles = m_members.program + L"Datafiles";
        }
    }
    m_shown = m_members;
}

void Model::AddTrustedPaths()
{
    std::wstring added;
    for (const wchar_t* const name : {L"common", L"electric", L"pid", L"isometric", L"ortho"}) {
        added += std::wstring(DesignFolders) + L"\\Designer\\" + name + L"\\R24;";
    }
    m_trustedPaths = std::wstring(TrustedPathsBefore) + L";" + added; // once
}

void Model::Apply()
{
    Exchange();
    m_stored = m_members;
    for (auto& folder : m_shortcuts) {
        for (ShortcutFile& file : folder) {
            if (file.isThere) {
                file.renewedFor = m_members.application;
            }
        }
    }
}

void Model::End(const RECT& place)
{
    m_place = Place::Nowhere;
    m_position = place;
}

// --- Manage Shortcuts ------------------------------------------------------------------------------------------------

void Model::OpenShortcuts()
{
    m_place = Place::Shortcuts;
    for (std::size_t row = 0; row < m_marks.size(); ++row) {
        m_marks.at(row) = m_shortcuts[0].at(row).isThere || m_shortcuts[1].at(row).isThere;
    }
}

void Model::CloseShortcuts(int button)
{
    m_place = Place::Main;
    if (button != IDOK) {
        return;
    }
    for (auto& folder : m_shortcuts) {
        for (std::size_t row = 0; row < m_marks.size(); ++row) {
            if (m_marks.at(row) != folder.at(row).isThere) {
                folder.at(row) = {m_marks.at(row), std::nullopt};
            }
            m_hasShortcutFolders = m_hasShortcutFolders || m_marks.at(row);
        }
    }
}

std::vector<std::wstring> Model::Rows() const
{
    std::vector<std::wstring> rows;
    for (std::size_t row = 0; row < m_marks.size(); ++row) {
        rows.push_back((m_marks.at(row) ? L"[x] " : L"[ ] ") + std::wstring(Tools[row].name));
    }
    return rows;
}

// --- the state of the machine ----------------------------------------------------------------------------------------

std::wstring Model::ListFolder() const
{
    return WithBackslash(m_stored.datafiles);
}

void Model::SetShortcut(State& state, const std::wstring& path, std::size_t row, const ShortcutFile& file)
{
    if (!file.isThere) {
        return;
    }
    if (!file.renewedFor) {
        state.SetEmptyFile(path);
        return;
    }
    Shortcut shortcut = RenewedShortcut(Tools[row], *file.renewedFor);
    if (file.renewedFor->empty()) { // then the target lies below the program's working folder
        shortcut.target = L"C:\\Suite\\Applications\\" + shortcut.target;
    }
    state.Set(path, shortcut);
}

State Model::Expected(const State& before) const
{
    State state = before;
    state.Set(Hive::Machine, SuiteKey, L"LocalAppPath", TextValue(m_stored.program));
    state.Set(Hive::Machine, SuiteKey, L"NetworkAppPath", TextValue(m_stored.application));
    state.Set(Hive::Machine, SuiteKey, L"DatafilesPath", TextValue(m_stored.datafiles));
    state.Set(Hive::Machine, TrustedPathsKey, L"", TextValue(m_trustedPaths));
    if (m_position) {
        state.Set(Hive::User, PositionKey, L"Application",
                  TextValue(std::to_wstring(m_position->left) + L"," + std::to_wstring(m_position->top) + L"," +
                            std::to_wstring(m_position->right) + L"," + std::to_wstring(m_position->bottom)));
    }
    for (const auto& [folder, lists] : m_files) {
        state.SetFile(folder + ListFileName, ContentOf(lists));
    }
    const std::array<std::wstring, 2> folders = {Installation::DesktopFolder(), Installation::ProgramsFolder()};
    if (m_hasShortcutFolders) {
        for (const std::wstring& folder : folders) {
            state.SetFolder(folder.substr(0, folder.size() - 1));
        }
        state.SetFolder(folders[1].substr(0, folders[1].rfind(L'\\', folders[1].size() - 2)));
    }
    for (std::size_t place = 0; place < folders.size(); ++place) {
        for (std::size_t row = 0; row < m_marks.size(); ++row) {
            SetShortcut(state, folders.at(place) + Tools[row].name + L".lnk", row, m_shortcuts.at(place).at(row));
        }
    }
    return state;
}

} // namespace sitekeeper::e2e
