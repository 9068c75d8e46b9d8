// What the contract tests do with real files behind the back of the ports.
#pragma once

#include "platform/Clock.h"
#include "support/FileState.h"

#include <memory>
#include <string>

namespace sitekeeper {

void SetFileAttributesOf(const std::wstring& path, FileAttributes attributes);
/// Those that `FileAttributes` knows.
[[nodiscard]] FileAttributes FileAttributesOf(const std::wstring& path);

/// Dates the last change of a file or folder.
void SetModifiedOf(const std::wstring& path, Seconds moment);

/// Leaves access rights to the owner alone.
void LeaveRightsToOwner(const std::wstring& path);
/// The access rights in the system's own text form.
[[nodiscard]] std::string TextOfRights(const std::wstring& path);

/// The name as it stands in the folder; empty when there is none.
[[nodiscard]] std::wstring SpelledName(const std::wstring& path);

/// Opens the file as the holder would, until the result goes; null when it cannot be opened like that.
[[nodiscard]] std::shared_ptr<void> HoldFile(const std::wstring& path, FileHolder holder);

} // namespace sitekeeper
