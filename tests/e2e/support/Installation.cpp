#include "e2e/support/Installation.h"

#include "e2e/support/FileTree.h"
#include "e2e/support/Wide.h"

#include <windows.h>

#include <shlobj.h>

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <stdexcept>

namespace sitekeeper::e2e {
namespace {

constexpr const wchar_t* Folders[] = {L"C:\\Suite", L"C:\\NewServer", L"C:\\Elsewhere", L"C:\\Datafiles",
                                      L"C:\\Applications"};
constexpr const wchar_t* ProgramAtTheRoot = L"C:\\SiteKeeper64.exe";

/// Where this machine has the folders that the program finds in the registry. Asked of the shell, once: a test may take
/// the registry's values away, and the shell writes them again when it is asked.
struct ShellPlaces
{
    std::wstring commonDesktop;
    std::wstring commonPrograms;
    std::wstring userDesktop;
    std::wstring userPrograms;
};

std::wstring AskShell(int folder, Hive hive, const wchar_t* valueName)
{
    std::array<wchar_t, MAX_PATH> path{};
    if (::SHGetFolderPathW(nullptr, folder | CSIDL_FLAG_CREATE, nullptr, SHGFP_TYPE_CURRENT, path.data()) != S_OK) {
        throw std::runtime_error("this machine has no folder " + ToUtf8(valueName));
    }
    // A test that was killed may have left the value missing.
    WriteValue(hive, ShellFoldersKey, valueName, TextValue(path.data()));
    return path.data();
}

const ShellPlaces& Places()
{
    static const ShellPlaces places = {
        AskShell(CSIDL_COMMON_DESKTOPDIRECTORY, Hive::Machine, L"Common Desktop"),
        AskShell(CSIDL_COMMON_PROGRAMS, Hive::Machine, L"Common Programs"),
        AskShell(CSIDL_DESKTOPDIRECTORY, Hive::User, L"Desktop"),
        AskShell(CSIDL_PROGRAMS, Hive::User, L"Programs"),
    };
    return places;
}

void Put(Hive hive, const std::wstring& key, const std::wstring& name, const std::optional<RegistryValue>& value)
{
    if (value) {
        WriteValue(hive, key, name, *value);
    } else {
        RemoveValue(hive, key, name);
    }
}

/// One of the steps of an end, of which each is to be tried; what it raises is a failure of the test.
template <typename Step>
void AttemptTo(Step step) noexcept
{
    try {
        step();
    } catch (const std::exception& error) {
        ADD_FAILURE() << error.what();
    }
}

} // namespace

std::vector<std::wstring> WatchedFolders()
{
    std::vector<std::wstring> folders(std::begin(Folders), std::end(Folders));
    const ShellPlaces& places = Places();
    folders.insert(folders.end(),
                   {places.commonDesktop, places.commonPrograms, places.userDesktop, places.userPrograms});
    return folders;
}

std::wstring ShippedFile(const std::wstring& name)
{
    if (const std::wstring given = EnvironmentText(L"SITEKEEPER_E2E_PROGRAMS"); !given.empty()) {
        return given + L"\\" + name;
    }
    // The build puts the programs at its top and this one two folders below.
    std::array<wchar_t, MAX_PATH> self{};
    ::GetModuleFileNameW(nullptr, self.data(), MAX_PATH);
    const std::wstring path = self.data();
    return path.substr(0, path.rfind(L'\\')) + L"\\..\\..\\" + name;
}

Shortcut RenewedShortcut(const Tool& tool, const std::wstring& applicationFolder)
{
    const std::wstring folder = applicationFolder + L"Applications\\";
    return {.target = folder + tool.program,
            .arguments = L"",
            .description = L"",
            .workingFolder = folder,
            .iconFile = folder + tool.program,
            .iconIndex = 0};
}

Installation::Installation()
{
    Clear();
    CopyFileTo(ShippedFile(L"SiteKeeper64.exe"), Program());
    CopyFileTo(ShippedFile(L"ORSWDialogsOEM64.dll"), DialogsLibrary());
    MakeFolders(L"C:\\Suite\\Datafiles");
    MakeFolders(L"C:\\Suite\\Help");
    MakeFolders(L"C:\\NewServer\\Suite\\Applications");
    SetFolders(L"C:\\Suite\\", L"C:\\Suite\\", L"C:\\Suite\\Datafiles\\");
    WriteValue(Hive::User, ReminderKey, L"CheckWebVersionDate", TextValue(L"2094-05-06 07:08:09"));
    WriteValue(Hive::User, ReminderKey, L"CheckWebVersionDays", NumberValue(14));
}

Installation::~Installation()
{
    std::reverse(m_borrowed.begin(), m_borrowed.end());
    for (const Borrowed& borrowed : m_borrowed) {
        AttemptTo([&] { Put(borrowed.hive, borrowed.key, borrowed.name, borrowed.former); });
    }
    AttemptTo(&Clear);
}

void Installation::Clear()
{
    RemoveSettings();
    for (const wchar_t* const folder : Folders) {
        RemoveFolder(folder);
    }
    ::DeleteFileW(ProgramAtTheRoot);
    const std::wstring library = DialogsLibrary();
    RemoveFolder(library.substr(0, library.rfind(L'\\')));
    RemoveFolder(Places().commonDesktop + L"\\ORIVEL LX Plus 2023");
    RemoveFolder(Places().userDesktop + L"\\ORIVEL LX Plus 2023");
    RemoveFolder(Places().commonPrograms + L"\\ORIVEL");
}

std::wstring Installation::Program()
{
    return L"C:\\Suite\\Applications\\SiteKeeper64.exe";
}

std::wstring Installation::DialogsLibrary()
{
    return EnvironmentText(L"CommonProgramFiles") + L"\\ORIVEL\\ORSWDialogsOEM64.dll";
}

std::wstring Installation::DesktopFolder()
{
    return Places().commonDesktop + L"\\ORIVEL LX Plus 2023\\";
}

std::wstring Installation::ProgramsFolder()
{
    return Places().commonPrograms + L"\\ORIVEL\\ORIVEL LX Plus 2023\\";
}

std::wstring Installation::UserDesktopFolder()
{
    return Places().userDesktop + L"\\ORIVEL LX Plus 2023\\";
}

void Installation::RemoveSettings()
{
    RemoveKey(Hive::Machine, MakerKey);
    RemoveKey(Hive::User, MakerKey);
    RemoveKey(Hive::Machine, AutoCADKey);
    RemoveEmptyKey(Hive::Machine, L"Software\\Autodesk");
}

void Installation::SetFolders(const std::wstring& program, const std::wstring& application,
                              const std::wstring& datafiles)
{
    WriteValue(Hive::Machine, SuiteKey, L"LocalAppPath", TextValue(program));
    WriteValue(Hive::Machine, SuiteKey, L"NetworkAppPath", TextValue(application));
    WriteValue(Hive::Machine, SuiteKey, L"DatafilesPath", TextValue(datafiles));
}

void Installation::AddOldShortcuts(const std::wstring& folder)
{
    for (const Tool& tool : Tools) {
        WriteShortcut(folder + tool.name + L".lnk", {.target = L"C:\\Old\\" + std::wstring(tool.program),
                                                     .arguments = L"/old",
                                                     .description = L"Before the move",
                                                     .workingFolder = L"C:\\Old",
                                                     .iconFile = L"C:\\Old\\icons.dll",
                                                     .iconIndex = 3});
    }
}

void Installation::AddTools(const std::wstring& applicationFolder)
{
    for (const Tool& tool : Tools) {
        WriteWholeFile(applicationFolder + L"Applications\\" + tool.program, "");
    }
}

void Installation::Borrow(Hive hive, const std::wstring& key, const std::wstring& name,
                          const std::optional<RegistryValue>& value)
{
    m_borrowed.push_back({hive, key, name, ReadValue(hive, key, name)});
    Put(hive, key, name, value);
}

} // namespace sitekeeper::e2e
