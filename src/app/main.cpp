// The program's entry, and the one place that chooses what stands behind the ports.
#include "app/ShellFolderChooser.h"
#include "app/SiteKeeperApp.h"
#include "res/ResourceIds.h"
#include "settings/InstallationSettings.h"
#include "update/UpdateCheck.h"
#include "win32/Win32Accounts.h"
#include "win32/Win32Clipboard.h"
#include "win32/Win32Clock.h"
#include "win32/Win32CodePage.h"
#include "win32/Win32Environment.h"
#include "win32/Win32FileSystem.h"
#include "win32/Win32HelpViewer.h"
#include "win32/Win32MessageBoxes.h"
#include "win32/Win32Modules.h"
#include "win32/Win32Printer.h"
#include "win32/Win32Processes.h"
#include "win32/Win32Registry.h"
#include "win32/Win32Shell.h"
#include "win32/Win32VersionResources.h"
#include "win32/Win32WebSession.h"

#include <windows.h>

#include <cstdlib>

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE /*previous*/, wchar_t* /*commandLine*/, int /*showCommand*/)
{
    using namespace sitekeeper;
    Win32Registry registry;
    Win32FileSystem files;
    Win32Shell shell;
    ShellFolderChooser folders;
    Win32MessageBoxes messages;
    Win32Modules modules;
    Win32Environment environment;
    Win32Accounts accounts;
    Win32Clock clock;
    Win32HelpViewer help;
    Win32CodePage codePage;
    Win32Clipboard clipboard;
    Win32WebSession web(CWinApp::ResourceText(instance, IDS_APP_NAME));
    Win32Processes processes;
    Win32VersionResources versions;
    Win32Printer printer;
    const Platform platform{registry, files, shell,    folders,   messages, modules,   environment, accounts,
                            clock,    help,  codePage, clipboard, web,      processes, versions,    printer};
    const auto remind = [&] {
        InstallationSettings settings(registry, environment, clock);
        UpdateCheck(platform, settings, CWinApp::ResourceText(instance, IDS_UPDATES_URL)).RunUpdateCheck();
    };
    CSiteKeeperApp app(instance, platform, __wargv[0], remind);
    return app.Run();
}
