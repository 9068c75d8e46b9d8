// What the contract tests stand on: the ports under test, and the few things that a test must be able to do behind
// their backs. Built once over the platform in memory and once over the real system; the tests are the same.
#pragma once

#include "platform/Accounts.h"
#include "platform/Clipboard.h"
#include "platform/Clock.h"
#include "platform/CodePage.h"
#include "platform/Environment.h"
#include "platform/FileSystem.h"
#include "platform/Modules.h"
#include "platform/Processes.h"
#include "platform/Registry.h"
#include "platform/Shell.h"
#include "platform/VersionResources.h"
#include "support/FileState.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace sitekeeper {

/// The scratch key that tests may fill, in both hives.
inline constexpr const wchar_t* ScratchKey = L"Software\\ORIVEL\\ContractTest";

/// How a program was started, as it sees it itself.
struct StartedAs
{
    /// All of the command line.
    std::wstring commandLine;
    /// The state in which it is asked to show its window; nothing when it is not asked. Values from winuser.h (SW_…).
    std::optional<int> showState;
    /// Values from winbase.h (…_PRIORITY_CLASS).
    std::uint32_t priority = 0;
    /// Ends in a "\\".
    std::wstring workingFolder;

    bool operator==(const StartedAs&) const = default;
};

class World
{
public:
    /// Makes the scratch folder and clears the scratch keys; the destructor removes all of them.
    World() = default;
    World(const World&) = delete;
    World& operator=(const World&) = delete;
    virtual ~World() = default;

    [[nodiscard]] virtual Registry& TheRegistry() = 0;
    [[nodiscard]] virtual FileSystem& Files() = 0;
    [[nodiscard]] virtual Shell& TheShell() = 0;
    [[nodiscard]] virtual Modules& TheModules() = 0;
    [[nodiscard]] virtual Environment& TheEnvironment() = 0;
    [[nodiscard]] virtual Accounts& TheAccounts() = 0;
    [[nodiscard]] virtual Clock& TheClock() = 0;
    [[nodiscard]] virtual CodePage& TheCodePage() = 0;
    [[nodiscard]] virtual Clipboard& TheClipboard() = 0;
    [[nodiscard]] virtual Processes& TheProcesses() = 0;
    [[nodiscard]] virtual VersionResources& TheVersionResources() = 0;

    /// An empty folder for the test, as a full path with a "\" at its end.
    [[nodiscard]] virtual std::wstring ScratchFolder() = 0;
    virtual void MakeFile(const std::wstring& path, const std::string& content) = 0;
    /// The content of a file that holds no shortcut.
    [[nodiscard]] virtual std::string ContentOf(const std::wstring& path) = 0;
    /// What the shortcut file says, as the system reads it; nothing when it holds no shortcut.
    [[nodiscard]] virtual std::optional<ShortcutFile> ReadShortcut(const std::wstring& path) = 0;
    virtual void SetCurrentFolder(const std::wstring& path) = 0;

    virtual void SetModified(const std::wstring& path, Seconds moment) = 0;
    virtual void SetAttributes(const std::wstring& path, FileAttributes attributes) = 0;
    [[nodiscard]] virtual FileAttributes AttributesOf(const std::wstring& path) = 0;
    /// Takes a file's access rights from everyone but its owner.
    virtual void RestrictRights(const std::wstring& path) = 0;
    /// A file's access rights, as a text to compare.
    [[nodiscard]] virtual std::string RightsOf(const std::wstring& path) = 0;
    /// The name of a file as its folder spells it; empty when there is none.
    [[nodiscard]] virtual std::wstring SpellingOf(const std::wstring& path) = 0;
    /// Another program opens the file, until the result goes. Null when it cannot.
    [[nodiscard]] virtual std::shared_ptr<void> Hold(const std::wstring& path, FileHolder holder) = 0;

    /// Texts of one character that have no bytes in the code page.
    [[nodiscard]] virtual std::vector<std::wstring> WithoutBytes() = 0;

    /// A window of the test's own, to put text on the clipboard with.
    [[nodiscard]] virtual WindowId Window() = 0;
    virtual void EmptyClipboard() = 0;
    /// Puts something there that is no text.
    virtual void PutPictureOnClipboard() = 0;
    /// Another program has the clipboard open, until the result goes.
    [[nodiscard]] virtual std::shared_ptr<void> HoldClipboard() = 0;

    virtual void SetVariable(const std::wstring& name, const std::wstring& text) = 0;
    virtual void RemoveVariable(const std::wstring& name) = 0;

    /// Wine differs from Windows here and there; a test that meets such a difference says so and is skipped.
    [[nodiscard]] virtual bool IsWine() = 0;

    /// Puts a program at `path` that notes how it was started and then stays until EndRecorder.
    virtual void MakeRecorder(const std::wstring& path) = 0;
    /// What the recorder at `path` noted; waits for it to be started, and gives nothing when that does not happen.
    [[nodiscard]] virtual std::optional<StartedAs> AwaitRecord(const std::wstring& path) = 0;
    [[nodiscard]] virtual bool IsRecorderRunning(const std::wstring& path) = 0;
    /// Lets the recorder end and waits until it has.
    virtual void EndRecorder(const std::wstring& path) = 0;
    /// The working folder of this process, with a "\\" at its end.
    [[nodiscard]] virtual std::wstring CurrentFolder() = 0;
    /// How many handles this process has open; 0 in memory, where there are none.
    [[nodiscard]] virtual unsigned OpenHandles() = 0;

    /// A file that has a version resource.
    [[nodiscard]] virtual std::wstring FileWithVersion() = 0;

    /// The bare name of a library that the system has, and its full path.
    [[nodiscard]] virtual std::wstring LibraryName() = 0;
    [[nodiscard]] virtual std::wstring LibraryPath() = 0;
};

[[nodiscard]] std::unique_ptr<World> MakeWorld();

} // namespace sitekeeper
