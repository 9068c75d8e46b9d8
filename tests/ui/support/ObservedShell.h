// A shell that lets a test look at the screen in the middle of the program's work.
#pragma once

#include "platform/Shell.h"

#include <functional>

namespace sitekeeper {

class ObservedShell final : public Shell
{
public:
    explicit ObservedShell(Shell& inner) : m_inner(inner) {}

    bool EnterComponents() override
    {
        if (onWork) {
            onWork();
        }
        return m_inner.EnterComponents();
    }
    void LeaveComponents() noexcept override { m_inner.LeaveComponents(); }
    ResultCode SaveShortcut(const std::wstring& path, const ShortcutFile& shortcut) override
    {
        return m_inner.SaveShortcut(path, shortcut);
    }
    void Explore(const std::wstring& folder) override { m_inner.Explore(folder); }
    void OpenProgram(const std::wstring& program, const std::wstring& parameters) override
    {
        m_inner.OpenProgram(program, parameters);
    }
    void Open(const std::wstring& address) override { m_inner.Open(address); }

    /// Called when the work on the shortcuts begins, before the first of them is touched.
    std::function<void()> onWork;

private:
    Shell& m_inner;
};

} // namespace sitekeeper
