// Port: what the program asks of the file system.
#pragma once

#include "platform/Port.h"

#include <optional>
#include <string>

namespace sitekeeper {

class FileSystem : public Port
{
public:
    /// True when a file or folder of that path exists and its attributes can be asked for. An empty path does not.
    [[nodiscard]] virtual bool Exists(const std::wstring& path) const = 0;

    /// The full path of `path`: drive or share first, "." and ".." resolved, doubled backslashes folded; relative paths
    /// are taken from the current folder. The file need not exist.
    /// Nothing for an empty path and for a result of 260 characters (MAX_PATH, terminator included) or more.
    [[nodiscard]] virtual std::optional<std::wstring> FullPath(const std::wstring& path) const = 0;

    /// Makes one folder; the folder above it must exist.
    /// False when it could not be made, also when something of that path exists already; nothing changes then.
    virtual bool MakeFolder(const std::wstring& path) = 0;
};

} // namespace sitekeeper
