// A suite installed on the machine the tests run on: real keys, real folders, the shipped program.
#pragma once

#include "e2e/support/RegistryAccess.h"
#include "e2e/support/Shortcuts.h"

#include <optional>
#include <string>
#include <vector>

namespace sitekeeper::e2e {

inline constexpr const wchar_t* MakerKey = L"Software\\ORIVEL";
inline constexpr const wchar_t* SuiteKey = L"Software\\ORIVEL\\LX Plus\\2023";
inline constexpr const wchar_t* ReminderKey = L"Software\\ORIVEL\\LX Plus\\2023\\Assist";
inline constexpr const wchar_t* PositionKey = L"Software\\ORIVEL\\LX Plus\\2023\\SiteKeeper\\WindowPosition";
inline constexpr const wchar_t* InstallationKey = L"Software\\ORIVEL\\LX Plus\\2023\\Installation";
/// Where the suite's uninstaller is registered, and where it is looked for next.
inline constexpr const wchar_t* UninstallKey =
    L"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\{6C1F2A3B-4D5E-4F60-8A71-92B3C4D5E6F7}";
inline constexpr const wchar_t* SecondUninstallKey = L"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\"
                                                     L"InstallShield_{6C1F2A3B-4D5E-4F60-8A71-92B3C4D5E6F7}";
/// Where AutoCAD keeps its releases and products, in the machine's hive.
inline constexpr const wchar_t* AutoCADKey = L"Software\\Autodesk\\AutoCAD";
inline constexpr const wchar_t* ShellFoldersKey =
    L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";
inline constexpr const wchar_t* CurrentVersionKey = L"Software\\Microsoft\\Windows\\CurrentVersion";

/// The access lists of the installed suite.
inline constexpr const wchar_t* ListFile = L"C:\\Suite\\Datafiles\\UserDatafile.ini";

/// One shortcut of the suite: its name, without ".lnk", and the program it is for.
struct Tool
{
    const wchar_t* name;
    const wchar_t* program;
};
inline constexpr Tool Tools[] = {
    {L"Ledger Composer", L"LedgerComposer64.exe"}, {L"Site Keeper", L"SiteKeeper64.exe"},
    {L"Sheet Writer", L"SheetWriter64.exe"},       {L"Norm Keeper", L"NormKeeper64.exe"},
    {L"Assist Web Page", L"Assist64.exe"},
};

/// Every folder that a journey looks at or may leave something in.
[[nodiscard]] std::vector<std::wstring> WatchedFolders();

/// The folder with the programs under test, and a file of it.
[[nodiscard]] std::wstring ShippedFile(const std::wstring& name);

/// The shortcut to a tool as the program writes it for an application folder that ends in "\".
[[nodiscard]] Shortcut RenewedShortcut(const Tool& tool, const std::wstring& applicationFolder);

class Installation
{
public:
    /// Removes what an earlier test left and installs the suite in C:\Suite: program, dialogs library, the three
    /// folders and the reminder in the registry (2094-05-06 07:08:09, 14 days). No shortcut.
    Installation();
    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;

    /// Leaves no trace, and the machine's own values as they were.
    ~Installation();

    /// C:\Suite\Applications\SiteKeeper64.exe.
    [[nodiscard]] static std::wstring Program();

    /// %CommonProgramFiles%\ORIVEL\ORSWDialogsOEM64.dll.
    [[nodiscard]] static std::wstring DialogsLibrary();

    /// The suite's own folders for shortcuts, ending in "\".
    [[nodiscard]] static std::wstring DesktopFolder();
    [[nodiscard]] static std::wstring ProgramsFolder();
    [[nodiscard]] static std::wstring UserDesktopFolder();

    /// As a fresh machine: none of the suite's keys, and no AutoCAD.
    static void RemoveSettings();
    static void SetFolders(const std::wstring& program, const std::wstring& application, const std::wstring& datafiles);

    /// All five in a folder, pointing somewhere else, with arguments and a description that renewal must not keep.
    static void AddOldShortcuts(const std::wstring& folder);

    /// The programs of all tools, as empty files, in an application folder that ends in "\".
    static void AddTools(const std::wstring& applicationFolder);

    /// Changes a value that belongs to the machine, nothing to remove it; the destructor brings it back.
    void Borrow(Hive hive, const std::wstring& key, const std::wstring& name,
                const std::optional<RegistryValue>& value);

private:
    struct Borrowed
    {
        Hive hive;
        std::wstring key;
        std::wstring name;
        std::optional<RegistryValue> former;
    };

    static void Clear();

    std::vector<Borrowed> m_borrowed;
};

} // namespace sitekeeper::e2e
