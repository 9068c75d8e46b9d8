// The whole platform in memory: everything that the program asks of Windows, without Windows.
#pragma once

#include "platform/Platform.h"
#include "settings/InstallationSettings.h"
#include "support/MemoryAccounts.h"
#include "support/MemoryClipboard.h"
#include "support/MemoryEnvironment.h"
#include "support/MemoryFileSystem.h"
#include "support/MemoryHelpViewer.h"
#include "support/MemoryModules.h"
#include "support/MemoryPrinter.h"
#include "support/MemoryProcesses.h"
#include "support/MemoryRegistry.h"
#include "support/MemoryShell.h"
#include "support/MemoryVersionResources.h"
#include "support/MemoryWebSession.h"
#include "support/ScriptedFolderChooser.h"
#include "support/ScriptedMessageBoxes.h"
#include "support/StillClock.h"
#include "support/Utf8CodePage.h"

#include <string>
#include <vector>

namespace sitekeeper {

/// All that can be seen from outside, one line for each thing.
using State = std::vector<std::wstring>;

struct MemoryPlatform
{
    MemoryRegistry registry;
    MemoryFileSystem files;
    MemoryShell shell{files};
    ScriptedFolderChooser folders;
    ScriptedMessageBoxes messages;
    MemoryModules modules;
    MemoryEnvironment environment;
    MemoryAccounts accounts;
    StillClock clock;
    MemoryHelpViewer help;
    Utf8CodePage codePage;
    MemoryClipboard clipboard;
    MemoryWebSession web;
    MemoryProcesses processes;
    MemoryVersionResources versions;
    MemoryPrinter printer;

    [[nodiscard]] Platform Ports();
    [[nodiscard]] State CurrentState() const;
};

/// The settings store on `platform`.
[[nodiscard]] InstallationSettings SettingsOn(const Platform& platform);

/// The lines of `after` that `before` lacks, and the other way round.
[[nodiscard]] State Added(const State& before, const State& after);
[[nodiscard]] State Removed(const State& before, const State& after);

} // namespace sitekeeper
