// Port: the version resources of files.
#pragma once

#include "platform/Port.h"

#include <cstddef>
#include <string>
#include <vector>

namespace sitekeeper {

class VersionResources : public Port
{
public:
    /// The version resource of a file as the system hands it out, in the form of VersionBlock. What is in it, the
    /// file's maker decided. Empty when the file has none or it cannot be read.
    [[nodiscard]] virtual std::vector<std::byte> ReadVersionBlock(const std::wstring& path) const = 0;
};

} // namespace sitekeeper
