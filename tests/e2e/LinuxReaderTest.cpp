// Leaves renewed shortcuts behind for read_shortcuts.py, which knows what they must hold.
#include "e2e/Journey.h"
#include "e2e/support/FileTree.h"

namespace sitekeeper::e2e {
namespace {

constexpr const wchar_t* KeptFolder = L"C:\\SiteKeeper shortcuts";

class LinuxReader : public Journey
{
protected:
    /// Renews all shortcuts for an application folder and keeps copies under a name.
    static void Renew(const std::wstring& applicationFolder, const std::wstring& keptName)
    {
        Installation::AddTools(applicationFolder);
        const ProgramRun run(Installation::Program());
        const MainWindow main(run);
        main.Type(Control::ApplicationPath, applicationFolder);
        main.Click(Control::Ok);
        ASSERT_EQ(run.WaitForEnd(), 0U);
        const std::wstring kept = std::wstring(KeptFolder) + L"\\" + keptName;
        for (const Tool& tool : Tools) {
            const std::wstring name = std::wstring(tool.name) + L".lnk";
            CopyFileTo(Installation::DesktopFolder() + name, std::wstring(kept).append(L"\\desktop\\").append(name));
            CopyFileTo(Installation::ProgramsFolder() + name, std::wstring(kept).append(L"\\programs\\").append(name));
        }
    }
};

} // namespace

TEST_F(LinuxReader, LeavesItsShortcuts)
{
    RemoveFolder(KeptFolder);
    Installation::AddOldShortcuts(Installation::DesktopFolder());
    Installation::AddOldShortcuts(Installation::ProgramsFolder());
    Renew(L"C:\\NewServer\\Suite\\", L"plain");
    Renew(L"C:\\NewServer\\Büro Иван\\", L"named");
}

} // namespace sitekeeper::e2e
