// The numbers of the resources, for the resource script and the code. Fixed: scripts and the suite's other tools send
// commands to the program by these numbers.
#pragma once

// Icons and bitmaps
#define IDI_PROGRAM 128
#define IDI_BROWSE 129
#define IDI_OPEN_FOLDER 130
#define IDI_LEDGER_COMPOSER 135
#define IDI_SHEET_WRITER 136
#define IDI_NORM_KEEPER 137
#define IDB_SPLASH 139

// Dialogs and menus
#define IDD_ABOUT 100
#define IDD_MAIN 102
#define IDD_MANAGE_SHORTCUTS 132
#define IDR_MAIN_MENU 133
#define IDD_USER_ACCESS 134

// Strings
#define IDS_APP_NAME 57344
#define IDS_ABOUT 101
#define IDS_UPDATES_URL 102

// Controls of the main dialog
#define IDC_PROGRAM_PATH 1000
#define IDC_APPLICATION_PATH 1001
#define IDC_BROWSE_APPLICATION 1002
#define IDC_DATAFILES_PATH 1003
#define IDC_BROWSE_DATAFILES 1004
#define IDC_OPEN_PROGRAM 1008
#define IDC_HELP_BUTTON 1009
#define IDC_OPEN_APPLICATION 1010
#define IDC_OPEN_DATAFILES 1011
#define IDC_SESSION_LIST 1014
#define IDC_REMINDER_DATE 1026
#define IDC_REMINDER_DAYS 1027
#define IDC_PROFILE 1028
#define IDC_PROFILE_LABEL 1029
#define IDC_SESSION_LABEL 1033
#define IDC_ICON_SIZE_LIST 1037

// Control of the About box
#define IDC_ABOUT_TEXT 1008

// Control of the dialog of shortcuts
#define IDC_SHORTCUT_TREE 1017

// Controls of the user access dialog
#define IDC_ADD_USER 1007
#define IDC_REFRESH_USERS 1013
#define IDC_USER_LIST 1018
#define IDC_NEW_USER 1019
#define IDC_LEDGER_COMPOSER_LIST 1020
#define IDC_SITE_KEEPER_LIST 1022
#define IDC_SHEET_WRITER_LIST 1023
#define IDC_NORM_KEEPER_LIST 1024

// Commands
#define ID_PRINT 57607
#define ID_APP_HELP 57670
#define ID_EXIT 32771
#define ID_HELP_CONTENTS 32772
#define ID_ABOUT 32773
#define ID_UNINSTALL 32775
#define ID_USER_ACCESS 32776
#define ID_MANAGE_SHORTCUTS 32777
#define ID_INSTALL_OEM 32779
#define ID_ADD_TRUSTED_PATHS 32780

// Items added to the main dialog's system menu. Below the system's own numbers (SC_...), which start at 0xF000.
#define ID_SYSTEM_ABOUT 16
#define ID_SYSTEM_SELECT_PROGRAM_PATH 17
