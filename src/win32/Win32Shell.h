// The real shell: links through the shell's own link object.
#pragma once

#include "platform/Shell.h"

namespace sitekeeper {

class Win32Shell final : public Shell
{
public:
    bool EnterComponents() override;
    void LeaveComponents() noexcept override;
    ResultCode SaveShortcut(const std::wstring& path, const ShortcutFile& shortcut) override;
    void Explore(const std::wstring& folder) override;
    void OpenProgram(const std::wstring& program, const std::wstring& parameters) override;
    void Open(const std::wstring& address) override;
};

} // namespace sitekeeper
