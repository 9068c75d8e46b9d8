// A shell in memory, for tests: shortcut files go into a MemoryFileSystem, explored folders into a list.
#pragma once

#include "platform/Shell.h"
#include "support/MemoryFileSystem.h"

#include <string>
#include <vector>

namespace sitekeeper {

/// CO_E_NOTINITIALIZED, ERROR_PATH_NOT_FOUND and E_ACCESSDENIED of winerror.h as result codes.
inline constexpr auto ComponentsNotEntered = static_cast<ResultCode>(static_cast<std::int32_t>(0x800401F0U));
inline constexpr auto PathNotFound = static_cast<ResultCode>(static_cast<std::int32_t>(0x80070003U));
inline constexpr auto AccessDenied = static_cast<ResultCode>(static_cast<std::int32_t>(0x80070005U));

class MemoryShell final : public Shell
{
public:
    explicit MemoryShell(MemoryFileSystem& files) : m_files(files) {}

    bool EnterComponents() override;
    void LeaveComponents() noexcept override;
    ResultCode SaveShortcut(const std::wstring& path, const ShortcutFile& shortcut) override;
    void Explore(const std::wstring& folder) override { m_explored.push_back(folder); }
    void OpenProgram(const std::wstring& program, const std::wstring& parameters) override
    {
        m_programs.push_back({program, parameters});
    }
    void Open(const std::wstring& address) override { m_opened.push_back(address); }

    /// A program that was opened, and what it was given.
    struct OpenedProgram
    {
        std::wstring program;
        std::wstring parameters;

        bool operator==(const OpenedProgram&) const = default;
    };

    /// From now on EnterComponents gives false.
    void RefuseComponents() { m_areComponentsRefused = true; }

    /// Entered and not yet left; negative when left too often.
    [[nodiscard]] int ComponentDepth() const { return m_depth; }
    /// How often EnterComponents gave true.
    [[nodiscard]] int ComponentEntries() const { return m_entries; }
    [[nodiscard]] const std::vector<std::wstring>& Explored() const { return m_explored; }
    [[nodiscard]] const std::vector<std::wstring>& Opened() const { return m_opened; }
    [[nodiscard]] const std::vector<OpenedProgram>& OpenedPrograms() const { return m_programs; }
    /// The paths of all successful SaveShortcut calls, in their order.
    [[nodiscard]] const std::vector<std::wstring>& Saved() const { return m_saved; }

private:
    MemoryFileSystem& m_files;
    int m_depth = 0;
    int m_entries = 0;
    bool m_areComponentsRefused = false;
    std::vector<std::wstring> m_explored;
    std::vector<std::wstring> m_opened;
    std::vector<OpenedProgram> m_programs;
    std::vector<std::wstring> m_saved;
};

} // namespace sitekeeper
