#include "support/MemoryModules.h"

#include "text/Text.h"

#include <algorithm>

namespace sitekeeper {

ModuleId MemoryModules::Load(const std::wstring& path)
{
    const auto found = m_libraries.find(ToLowerCase(path));
    if (found == m_libraries.end()) {
        return ModuleId::None;
    }
    ++found->second.count;
    return found->second.id;
}

void MemoryModules::Release(ModuleId library) noexcept
{
    if (library == ModuleId::None) {
        return;
    }
    const auto found = std::find_if(m_libraries.begin(), m_libraries.end(),
                                    [library](const auto& pair) { return pair.second.id == library; });
    if (found == m_libraries.end() || found->second.count == 0) {
        ++m_strayReleases;
    } else {
        --found->second.count;
    }
}

void MemoryModules::AddLibrary(const std::wstring& path)
{
    // Real handles are addresses; any distinct numbers will do.
    constexpr std::uintptr_t FirstId = 0x10000;
    const auto id = static_cast<ModuleId>(FirstId * (m_libraries.size() + 1));
    m_libraries.try_emplace(ToLowerCase(path), Library{path, id, 0});
}

std::vector<std::wstring> MemoryModules::Loaded() const
{
    std::vector<std::wstring> paths;
    for (const auto& [folded, library] : m_libraries) {
        if (library.count > 0) {
            paths.push_back(library.path);
        }
    }
    return paths;
}

} // namespace sitekeeper
