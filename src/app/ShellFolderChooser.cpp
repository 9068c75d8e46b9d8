#include "app/ShellFolderChooser.h"

#include "controls/FolderBrowser.h"

#include <windows.h>

#include <ole2.h>

namespace sitekeeper {
namespace {

/// The picker's resizable style needs the component runtime, which the program otherwise enters only to write
/// shortcuts.
class OleScope
{
public:
    OleScope() noexcept : m_isEntered(SUCCEEDED(::OleInitialize(nullptr))) {}
    OleScope(const OleScope&) = delete;
    OleScope& operator=(const OleScope&) = delete;
    ~OleScope()
    {
        if (m_isEntered) {
            ::OleUninitialize();
        }
    }

private:
    bool m_isEntered;
};

} // namespace

void ShellFolderChooser::Choose(const std::wstring& title, std::wstring& path)
{
    const OleScope ole;
    BrowseForFolderPath(title, path);
}

} // namespace sitekeeper
