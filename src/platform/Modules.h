// Port: libraries loaded at run time.
#pragma once

#include "platform/Port.h"

#include <cstdint>
#include <string>

namespace sitekeeper {

/// A loaded library, as an opaque number (HMODULE).
enum class ModuleId : std::uintptr_t
{
    None = 0
};

class Modules : public Port
{
public:
    /// Loads the library at `path`, or finds it by the system's search order when `path` is a bare name.
    /// None when there is no such library or it cannot be loaded; no system message is shown by the program for it.
    [[nodiscard]] virtual ModuleId Load(const std::wstring& path) = 0;

    /// Gives back what Load gave. None is allowed and does nothing.
    virtual void Release(ModuleId library) noexcept = 0;
};

} // namespace sitekeeper
