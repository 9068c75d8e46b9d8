// Replacing the content of a file so that nothing is lost on the way.
#pragma once

#include "platform/FileSystem.h"

#include <string>
#include <string_view>

namespace sitekeeper {

/// Gives the file `path` the content `bytes`, and makes it where it is missing. An interruption at any moment (a kill,
/// a full disk, a lost share) leaves the old content or the new one: it is written to a neighbour, flushed, and put in
/// the file's place in one step. Where no neighbour can be made or moved, the file itself is written over and, should
/// that fail, its old content put back; an interruption there can leave a mixture. False when the file may not be
/// written or a step failed; it is then as it was, and no neighbour is left. The same holds where a step raises an
/// error, which is passed on.
bool SaveContent(FileSystem& files, const std::wstring& path, std::string_view bytes);

/// The neighbour through which `path` is written: its last character replaced by "~", so that it is no longer than the
/// file's own. One that an earlier crash left is emptied and used up.
[[nodiscard]] std::wstring NeighbourOf(const std::wstring& path);

} // namespace sitekeeper
