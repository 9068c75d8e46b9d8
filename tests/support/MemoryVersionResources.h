// The version resources of files in memory, for tests.
#pragma once

#include "platform/VersionResources.h"
#include "text/Text.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace sitekeeper {

class MemoryVersionResources final : public VersionResources
{
public:
    [[nodiscard]] std::vector<std::byte> ReadVersionBlock(const std::wstring& path) const override
    {
        const auto found = m_blocks.find(ToLowerCase(path));
        return found == m_blocks.end() ? std::vector<std::byte>() : found->second;
    }

    /// From now on the file of that path, compared without regard to case, has this version resource.
    void Set(const std::wstring& path, std::vector<std::byte> block)
    {
        m_blocks.insert_or_assign(ToLowerCase(path), std::move(block));
    }

private:
    std::map<std::wstring, std::vector<std::byte>> m_blocks;
};

} // namespace sitekeeper
