#include "support/MemoryShell.h"

namespace sitekeeper {

bool MemoryShell::EnterComponents()
{
    if (m_areComponentsRefused) {
        return false;
    }
    ++m_depth;
    ++m_entries;
    return true;
}

void MemoryShell::LeaveComponents() noexcept
{
    --m_depth;
}

ResultCode MemoryShell::SaveShortcut(const std::wstring& path, const ShortcutFile& shortcut)
{
    constexpr std::size_t LinkPathRoom = 260;
    if (path.size() >= LinkPathRoom) {
        return ResultCode::Fail;
    }
    if (m_depth <= 0) {
        return ComponentsNotEntered;
    }
    if (!m_files.WriteShortcut(path, shortcut)) {
        return m_files.Exists(path) ? AccessDenied : PathNotFound;
    }
    m_saved.push_back(path);
    return ResultCode::Ok;
}

} // namespace sitekeeper
