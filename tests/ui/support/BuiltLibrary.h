// The dialogs library of this build, loaded by the real loader under whatever path the program asks for.
#pragma once

#include "platform/Modules.h"
#include "win32/Win32Modules.h"

#include <string>
#include <vector>

namespace sitekeeper {

class BuiltLibrary final : public Modules
{
public:
    [[nodiscard]] ModuleId Load(const std::wstring& path) override;
    void Release(ModuleId library) noexcept override;

    /// The library's file in this build.
    [[nodiscard]] static std::wstring File();

    /// The paths that the program asked for.
    [[nodiscard]] const std::vector<std::wstring>& Asked() const { return m_asked; }
    /// Loaded and not yet released.
    [[nodiscard]] int Held() const { return m_held; }

private:
    Win32Modules m_modules;
    std::vector<std::wstring> m_asked;
    int m_held = 0;
};

} // namespace sitekeeper
