// Who is let in. The program asks the system for the user's name; a copy whose import table names a stand-in for that
// one library is told any name.
#include "e2e/Journey.h"
#include "e2e/support/PatchedProgram.h"

namespace sitekeeper::e2e {
namespace {

class Gate : public Journey
{};

class AdmittedUser : public Gate, public ::testing::WithParamInterface<std::wstring>
{};

} // namespace

TEST_F(Gate, AUserWithoutANameSeesOneMessageAndNothingElse)
{
    const NamedUser user(L"");
    const State before = State::Take();
    const ProgramRun run(user.Program());
    const bool splashWasSeen = IsSplash(run.AwaitWindow("the first window", [](HWND) { return true; }));
    const MessageWindow message(run);
    EXPECT_FALSE(splashWasSeen);
    EXPECT_EQ(run.Windows().size(), 1U);
    EXPECT_EQ(message.Caption(), L"LX Plus 2023");
    EXPECT_EQ(message.Text(), L",\nYou do not have permission to run this application.\n\n"
                              L"Please contact your system administrator.");
    EXPECT_EQ(message.Owner(), nullptr);
    EXPECT_TRUE(message.HasOnlyOk());
    EXPECT_NE(message.Icon(), nullptr);
    SaveMoment(message.Handle(), L"refusal");
    message.Confirm();
    ExpectEnd(run, before); // not even a window position
}

TEST_P(AdmittedUser, GetsIntoTheMainDialog)
{
    const NamedUser user(GetParam());
    const ProgramRun run(user.Program());
    const MainWindow main(run);
    main.Click(Control::Cancel);
    EXPECT_EQ(run.WaitForEnd(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Names, AdmittedUser, ::testing::Values(L"ADMINISTRATOR", L"Иван", L"O'Brien", L" "));

} // namespace sitekeeper::e2e
