// The system's loader.
#pragma once

#include "platform/Modules.h"

namespace sitekeeper {

class Win32Modules final : public Modules
{
public:
    [[nodiscard]] ModuleId Load(const std::wstring& path) override;
    void Release(ModuleId library) noexcept override;
};

} // namespace sitekeeper
