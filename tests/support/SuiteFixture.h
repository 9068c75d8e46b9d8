// An installation of the suite on a platform in memory, as most tests of the main dialog's rules begin with it.
#pragma once

#include "maindlg/ApplyInstallation.h"
#include "support/MemoryPlatform.h"

#include <string>

namespace sitekeeper {

inline constexpr const wchar_t* ShellFoldersKey =
    L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";
inline constexpr const wchar_t* DesktopFolder = L"D:\\Desktop\\ORIVEL LX Plus 2023\\";
inline constexpr const wchar_t* ProgramsFolder = L"D:\\Programs\\ORIVEL\\ORIVEL LX Plus 2023\\";

/// Names the two shell folders of all users in the registry and puts placeholders of two shortcuts into each.
inline void InstallShortcuts(MemoryPlatform& memory)
{
    memory.registry.SetText(Hive::LocalMachine, ShellFoldersKey, L"Common Desktop", L"D:\\Desktop");
    memory.registry.SetText(Hive::LocalMachine, ShellFoldersKey, L"Common Programs", L"D:\\Programs");
    for (const std::wstring folder : {DesktopFolder, ProgramsFolder}) {
        memory.files.AddFile(folder + L"Site Keeper.lnk", "old");
        memory.files.AddFile(folder + L"Norm Keeper.lnk", "old");
    }
}

/// What the tests press OK on.
inline const InstallationFolders NewFolders{L"C:\\Suite\\", L"N:\\Suite\\", L"N:\\Suite\\Datafiles\\"};
inline const ReminderSchedule NewSchedule{CalendarTime{2024, 5, 6, 7, 8, 9}, 14};

/// The shortcut file to a program of the suite in `folder`'s "Applications".
inline ShortcutFile ShortcutTo(const std::wstring& applicationFolder, const std::wstring& program)
{
    const std::wstring tools = applicationFolder + L"Applications\\";
    return {tools + program, L"", tools, tools + program, 0};
}

} // namespace sitekeeper
