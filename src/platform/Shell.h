// Port: the Windows shell: shortcut files and the file explorer.
#pragma once

#include "platform/PlatformError.h"
#include "platform/Port.h"

#include <string>

namespace sitekeeper {

/// What a shortcut file says.
struct ShortcutFile
{
    std::wstring target;
    std::wstring arguments;
    std::wstring workingFolder;
    /// The file that holds the icon, and the icon's position in it.
    std::wstring iconFile;
    int iconIndex = 0;

    bool operator==(const ShortcutFile&) const = default;
};

class Shell : public Port
{
public:
    /// Initialises the component runtime for the calling thread, which SaveShortcut needs. Each call that gives true
    /// is to be matched by one LeaveComponents; after false (the thread runs it in another mode, or no memory) there is
    /// nothing to leave.
    virtual bool EnterComponents() = 0;
    virtual void LeaveComponents() noexcept = 0;

    /// Writes a shortcut file to `path`, replacing what the file held. The target need not exist.
    /// Ok when it was written; otherwise the failing step's code, and the file is as it was. A path of 260 characters
    /// (MAX_PATH, terminator included) or more is refused with Fail.
    virtual ResultCode SaveShortcut(const std::wstring& path, const ShortcutFile& shortcut) = 0;

    /// Opens `folder` in the file explorer (verb "explore", shown normally, no owner). What comes of it is not
    /// reported; an empty or missing folder opens nothing, or whatever the shell makes of it.
    virtual void Explore(const std::wstring& folder) = 0;

    /// Starts the program file `program` with `parameters` as the shell opens it (verb "open", shown normally, no
    /// owner, no working folder of its own) and does not wait for it. What comes of it is not reported.
    virtual void OpenProgram(const std::wstring& program, const std::wstring& parameters) = 0;

    /// Opens a web address in the user's browser (verb "open", shown, no owner). What comes of it is not reported.
    virtual void Open(const std::wstring& address) = 0;
};

} // namespace sitekeeper
