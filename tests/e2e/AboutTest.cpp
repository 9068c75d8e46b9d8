// The About box of the shipped file.
#include "e2e/Journey.h"

namespace sitekeeper::e2e {
namespace {

constexpr int AboutText = 1008;

class About : public Journey
{
protected:
    /// What the box says that the command opens.
    static std::wstring Shown(const ProgramRun& run, const MainWindow& main, Command command, const wchar_t* moment)
    {
        main.Choose(command);
        const HWND box = run.AwaitWindow("the About box", [](HWND window) {
            return WindowText(window) == L"About Site Keeper" && ::GetDlgItem(window, AboutText) != nullptr;
        });
        EXPECT_EQ(::GetWindow(box, GW_OWNER), main.Handle());
        std::wstring text = WindowText(::GetDlgItem(box, AboutText));
        SaveMoment(box, moment);
        ::PostMessageW(box, WM_COMMAND, IDOK, 0);
        run.Await("the About box to close", [box] { return ::IsWindow(box) == FALSE; });
        return text;
    }
};

} // namespace

TEST_F(About, TellsProgramSuiteUpdateAndCopyright)
{
    WriteValue(Hive::Machine, SuiteKey, L"ProductUpdate", TextValue(L"3"));
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    const std::wstring version = L"Site Keeper Version " SITEKEEPER_VERSION;
    const std::wstring copyright = L"Copyright \u00A9 2023-2026 ORIVEL";
    EXPECT_EQ(Shown(run, main, Command::About, L"about-update"),
              version + L"\n\nORIVEL LX Version 2023    Update 3\n\n" + copyright);
    RemoveValue(Hive::Machine, SuiteKey, L"ProductUpdate");
    EXPECT_EQ(Shown(run, main, Command::SystemAbout, L"about"),
              version + L"\n\nORIVEL LX Version 2023\n\n" + copyright);
    main.Click(Control::Cancel);
    EXPECT_EQ(run.WaitForEnd(), 0U);
}

} // namespace sitekeeper::e2e
