// What the program is expected to show and to leave behind, told by the gestures alone.
#pragma once

#include "e2e/support/State.h"
#include "e2e/support/UserAccessWindow.h"

#include <windows.h>

#include <array>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace sitekeeper::e2e {

/// The three folders, as texts.
struct FolderTexts
{
    std::wstring program;
    std::wstring application;
    std::wstring datafiles;
};

/// The five lists of a list file or of the dialog.
inline constexpr std::array<AccessControl, 5> AccessListControls = {
    AccessControl::Users, AccessControl::LedgerComposer, AccessControl::SiteKeeper, AccessControl::SheetWriter,
    AccessControl::NormKeeper};
using AccessNames = std::map<AccessControl, Names>;

/// Where the administrator is.
enum class Place
{
    Nowhere, // the program does not run
    Main,
    UserAccess,
    Shortcuts
};

class Model
{
public:
    /// A fresh installation, with this product of AutoCAD, and these accounts on the computer.
    Model(std::wstring userName, Names accounts);

    // --- the program and its main dialog

    /// Whether the gate lets the user in.
    [[nodiscard]] bool IsAdmitted() const;
    /// Another administrator lets everybody in, by the list file.
    void AdmitEverybody();
    void Start();
    void Type(std::wstring FolderTexts::*field, const std::wstring& text) { m_shown.*field = text; }
    /// The fields are read.
    void Exchange() { m_members = m_shown; }
    /// An empty choice is a cancelled picker.
    void BrowseApplication(const std::wstring& choice);
    void BrowseDatafiles(const std::wstring& choice);
    void SelectProgram(const std::wstring& choice);
    void AddTrustedPaths();
    void Apply();
    /// However the program ended, its window was there.
    void End(const RECT& place);

    // --- the other dialogs

    void OpenAccess();
    void Add(const std::wstring& name);
    void Refresh();
    void Move(AccessControl from, const Names& names, AccessControl to);
    void Copy(const Names& names);
    void Cut(AccessControl list, const Names& names);
    void Delete(AccessControl list, const Names& names);
    void Paste(AccessControl list);
    void CloseAccess(int button);

    void OpenShortcuts();
    void Toggle(std::size_t row) { m_marks.at(row) = !m_marks.at(row); }
    void CloseShortcuts(int button);

    // --- what is expected

    [[nodiscard]] Place Where() const noexcept { return m_place; }
    [[nodiscard]] const FolderTexts& Shown() const noexcept { return m_shown; }
    [[nodiscard]] const AccessNames& Lists() const noexcept { return m_lists; }
    [[nodiscard]] const std::wstring& NewUser() const noexcept { return m_newUser; }
    [[nodiscard]] bool CanPaste() const noexcept { return !m_clipboard.empty(); }
    [[nodiscard]] std::vector<std::wstring> Rows() const;

    /// The state of the machine, built on the one in which all began.
    [[nodiscard]] State Expected(const State& before) const;

    /// What may be typed: folders, all of them legal, some of them not there; those that are; names.
    [[nodiscard]] static const std::vector<std::wstring>& SomeFolders();
    [[nodiscard]] static const std::vector<std::wstring>& RealFolders();
    [[nodiscard]] static const Names& SomeNames();

    static constexpr const wchar_t* TrustedPathsKey = L"Software\\Autodesk\\AutoCAD\\R24.0\\ACAD-4101:409\\"
                                                      L"Variables\\TRUSTEDPATHS";
    static constexpr const wchar_t* TrustedPathsBefore = L"C:\\Program Files\\Own";
    static constexpr const wchar_t* DesignFolders = L"C:\\Suite";

private:
    /// A shortcut file of a tool in one of the two folders.
    struct ShortcutFile
    {
        bool isThere = false;
        std::optional<std::wstring> renewedFor; // the application folder; a placeholder without
    };
    using ShortcutFiles = std::array<std::array<ShortcutFile, 5>, 2>;

    static void SetShortcut(State& state, const std::wstring& path, std::size_t row, const ShortcutFile& file);
    [[nodiscard]] std::wstring ListFolder() const;
    [[nodiscard]] bool CanWriteLists() const;
    [[nodiscard]] AccessNames StoredLists() const;
    void Rebuild();
    void ShowEveryoneInAll();
    void InsertMissing(AccessControl list, const Names& names);

    std::wstring m_userName;
    Names m_accounts;
    Place m_place = Place::Nowhere;
    FolderTexts m_stored{L"C:\\Suite\\", L"C:\\Suite\\", L"C:\\Suite\\Datafiles\\"};
    FolderTexts m_shown;
    FolderTexts m_members;
    std::optional<RECT> m_position;
    std::map<std::wstring, AccessNames> m_files; // by folder
    ShortcutFiles m_shortcuts{};
    bool m_hasShortcutFolders = false;
    std::wstring m_trustedPaths = TrustedPathsBefore;
    AccessNames m_lists;
    std::wstring m_newUser;
    Names m_clipboard;
    std::array<bool, 5> m_marks{};
};

} // namespace sitekeeper::e2e
