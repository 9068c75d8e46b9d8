// A loader in memory, for tests: the libraries it knows are named beforehand.
#pragma once

#include "platform/Modules.h"

#include <map>
#include <string>
#include <vector>

namespace sitekeeper {

class MemoryModules final : public Modules
{
public:
    [[nodiscard]] ModuleId Load(const std::wstring& path) override;
    void Release(ModuleId library) noexcept override;

    /// From now on a library can be loaded from `path`, a full path or a bare name. Whether a file of that path
    /// exists is the file system's concern.
    void AddLibrary(const std::wstring& path);

    /// The paths of the libraries that are loaded at present, sorted.
    [[nodiscard]] std::vector<std::wstring> Loaded() const;
    /// How often something was released that was not loaded.
    [[nodiscard]] int StrayReleases() const { return m_strayReleases; }

private:
    struct Library
    {
        std::wstring path;
        ModuleId id = ModuleId::None;
        int count = 0;
    };

    std::map<std::wstring, Library> m_libraries; // by path in lower case
    int m_strayReleases = 0;
};

} // namespace sitekeeper
