// The real file system.
#pragma once

#include "platform/FileSystem.h"

namespace sitekeeper {

class Win32FileSystem final : public FileSystem
{
public:
    [[nodiscard]] bool Exists(const std::wstring& path) const override;
    [[nodiscard]] std::optional<std::wstring> FullPath(const std::wstring& path) const override;
    bool MakeFolder(const std::wstring& path) override;
};

} // namespace sitekeeper
