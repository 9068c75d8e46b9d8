// All that the program needs of Windows, in one hand. `main.cpp` fills it with the real adapters, tests with their own.
#pragma once

#include "platform/Accounts.h"
#include "platform/Clipboard.h"
#include "platform/Clock.h"
#include "platform/CodePage.h"
#include "platform/Environment.h"
#include "platform/FileSystem.h"
#include "platform/FolderChooser.h"
#include "platform/HelpViewer.h"
#include "platform/MessageBoxes.h"
#include "platform/Modules.h"
#include "platform/Printer.h"
#include "platform/Processes.h"
#include "platform/Registry.h"
#include "platform/Shell.h"
#include "platform/VersionResources.h"
#include "platform/WebSession.h"

namespace sitekeeper {

struct Platform
{
    Registry& registry;
    FileSystem& files;
    Shell& shell;
    FolderChooser& folders;
    MessageBoxes& messages;
    Modules& modules;
    Environment& environment;
    Accounts& accounts;
    Clock& clock;
    HelpViewer& help;
    CodePage& codePage;
    Clipboard& clipboard;
    WebSession& web;
    Processes& processes;
    VersionResources& versions;
    Printer& printer;
};

} // namespace sitekeeper
