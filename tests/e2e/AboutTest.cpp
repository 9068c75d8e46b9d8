// The About box of the shipped file.
#include "e2e/Journey.h"

namespace sitekeeper::e2e {
namespace {

class About : public Journey
{
protected:
    /// What the box says that the command opens.
    static std::wstring Shown(const ProgramRun& run, const MainWindow& main, Command command, const wchar_t* moment)
    {
        main.Choose(command);
        const AboutWindow box(run);
        EXPECT_EQ(box.Caption(), L"About Site Keeper");
        EXPECT_EQ(box.Owner(), main.Handle());
        std::wstring text = box.Text();
        SaveMoment(box.Handle(), moment);
        box.Confirm();
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
