// The suite's folders among AutoCAD's trusted paths: the command that the menu grays and scripts send.
#include "e2e/Journey.h"

namespace sitekeeper::e2e {
namespace {

constexpr const wchar_t* Folder1 = L"C:\\Program Files\\Suite\\Designer\\common\\R24";

class TrustedPaths : public Journey
{
protected:
    TrustedPaths()
    {
        WriteValue(Hive::Machine, InstallationKey, L"Application Path", TextValue(L"C:\\Program Files\\Suite"));
    }

    static std::wstring PathsKey(const std::wstring& release, const std::wstring& product)
    {
        return std::wstring(AutoCADKey) + L"\\" + release + L"\\" + product + L"\\Variables\\TRUSTEDPATHS";
    }
    static void AddProduct(const std::wstring& release, const std::wstring& product, const std::wstring& paths)
    {
        WriteValue(Hive::Machine, PathsKey(release, product), L"", TextValue(paths));
    }
    /// What the command is to leave in a product.
    struct Written
    {
        std::wstring release;
        std::wstring product;
        std::wstring paths;
    };
    static std::wstring FiveFolders(const std::wstring& prefix)
    {
        std::wstring text;
        for (const wchar_t* const name : {L"common", L"electric", L"pid", L"isometric", L"ortho"}) {
            text += L"C:\\Program Files\\Suite\\Designer\\" + std::wstring(name) + L"\\" + prefix + L";";
        }
        return text;
    }

    /// Sends the command; it is confirmed, and nothing but that is written, also when the dialog has ended.
    static void ExpectConfirmed(const std::vector<Written>& written)
    {
        const ProgramRun run(Installation::Program());
        const MainWindow main(run);
        State expected = Expected(written);
        main.Choose(Command::AddTrustedPaths);
        {
            const MessageWindow message(run);
            EXPECT_EQ(message.Text(), L"The ORIVEL LX file paths have been added to the AutoCAD Trusted Paths. ");
            EXPECT_EQ(message.Caption(), L"Site Keeper");
            EXPECT_EQ(message.Owner(), main.Handle());
            EXPECT_TRUE(message.HasOnlyOk());
            EXPECT_FALSE(message.HasIcon());
            SaveMoment(main.Handle(), L"trusted-paths");
            SaveMoment(message.Handle(), L"trusted-paths-message");
            message.Confirm();
        }
        ExpectCancelled(run, main, expected);
    }

    /// The same, but the command ends with the error, which names the product at which it stopped.
    static void ExpectRefused(const std::vector<Written>& written, const std::wstring& product)
    {
        const ProgramRun run(Installation::Program());
        const MainWindow main(run);
        State expected = Expected(written);
        main.Choose(Command::AddTrustedPaths);
        {
            const MessageWindow message(run);
            EXPECT_NE(message.Text().find(L"HKEY_LOCAL_MACHINE\\" + product + L"\n"), std::wstring::npos);
            EXPECT_NE(message.Text().find(L"The products before it, 1 in number, are done, and what was written for "
                                          L"them stays."),
                      std::wstring::npos);
            EXPECT_NE(message.Text().find(L"(Error 0x80070057)"), std::wstring::npos);
            EXPECT_EQ(message.Caption(), L"LX Plus 2023");
            EXPECT_EQ(message.Owner(), main.Handle());
            EXPECT_TRUE(message.HasOnlyOk());
            EXPECT_TRUE(message.HasIcon());
            SaveMoment(main.Handle(), L"trusted-paths-refused");
            message.Confirm();
        }
        ExpectCancelled(run, main, expected);
    }

    /// The state of now, and what the command is to write.
    static State Expected(const std::vector<Written>& written)
    {
        State state = State::Take();
        for (const Written& each : written) {
            state.Set(Hive::Machine, PathsKey(each.release, each.product), L"", TextValue(each.paths));
        }
        return state;
    }

private:
    static void ExpectCancelled(const ProgramRun& run, const MainWindow& main, State& expected)
    {
        run.Await("the dialog to be enabled again", [&] { return ::IsWindowEnabled(main.Handle()) != FALSE; });
        EXPECT_EQ(run.Windows().size(), 1U) << "no further message";
        EXPECT_TRUE(IsNow(expected));
        ExpectPosition(expected, main.Rectangle());
        main.Click(Control::Cancel);
        ExpectEnd(run, expected);
    }
};

} // namespace

TEST_F(TrustedPaths, WithoutAutoCADNothingIsWrittenAndItIsConfirmed)
{
    ExpectConfirmed({});
}

TEST_F(TrustedPaths, OtherReleasesAreLeftAlone)
{
    AddProduct(L"R19.1", L"ACAD-D001:409", L"C:\\A");
    AddProduct(L"R25.0", L"ACAD-8101:409", L"C:\\A");
    AddProduct(L"R24.3", L"ACAD-6101:409", L"DEFAULT");
    ExpectConfirmed({});
}

TEST_F(TrustedPaths, AProductGetsTheFiveFolders)
{
    AddProduct(L"R24.1", L"ACAD-5101:409", L"C:\\A");
    ExpectConfirmed({{L"R24.1", L"ACAD-5101:409", L"C:\\A;" + FiveFolders(L"R24")}});
    const auto stored = ReadValue(Hive::Machine, PathsKey(L"R24.1", L"ACAD-5101:409"), L"");
    ASSERT_TRUE(stored);
    EXPECT_EQ(stored->type, static_cast<DWORD>(REG_SZ));
    EXPECT_EQ(stored->bytes, TextValue(L"C:\\A;" + FiveFolders(L"R24")).bytes);
}

TEST_F(TrustedPaths, ALastSeparatorIsNotDoubled)
{
    AddProduct(L"R20.0", L"P", L"C:\\A;C:\\B;");
    ExpectConfirmed({{L"R20.0", L"P", L"C:\\A;C:\\B;" + FiveFolders(L"R20")}});
}

TEST_F(TrustedPaths, AnEmptyValueGetsTheFoldersAlone)
{
    AddProduct(L"R22.0", L"P", L"");
    ExpectConfirmed({{L"R22.0", L"P", FiveFolders(L"R22")}});
}

TEST_F(TrustedPaths, AProductThatHoldsTheFirstFolderIsLeftAlone)
{
    AddProduct(L"R24.0", L"P", std::wstring(L"C:\\A;") + Folder1);
    ExpectConfirmed({});
}

TEST_F(TrustedPaths, AlsoInAnotherLetterCase)
{
    AddProduct(L"R24.0", L"P", L"c:\\PROGRAM files\\suite\\DESIGNER\\Common\\r24;C:\\B");
    ExpectConfirmed({});
}

TEST_F(TrustedPaths, OfTwoProductsTheFirstIsWrittenAndTheSecondRefused)
{
    AddProduct(L"R23.0", L"A", L"C:\\A");
    AddProduct(L"R24.0", L"B", L"C:\\B");
    ExpectRefused({{L"R23.0", L"A", L"C:\\A;" + FiveFolders(L"R23")}}, PathsKey(L"R24.0", L"B"));
}

TEST_F(TrustedPaths, BehindAMatchTheSearchGoesOnAtTheSameCharacter)
{
    const std::wstring first = Folder1;
    AddProduct(L"R24.0", L"A", first);
    AddProduct(L"R24.0", L"B", first + L";C:\\B"); // looked at from behind the folder on
    AddProduct(L"R24.1", L"C", L"C:\\C");          // not reached
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    const State expected = Expected({{L"R24.0", L"B", first + L";C:\\B;" + FiveFolders(L"R24")}});
    main.Choose(Command::AddTrustedPaths);
    const MessageWindow message(run);
    EXPECT_NE(message.Text().find(PathsKey(L"R24.1", L"C")), std::wstring::npos);
    EXPECT_NE(message.Text().find(L"2 in number"), std::wstring::npos);
    message.Confirm();
    EXPECT_TRUE(IsNow(expected));
}

TEST_F(TrustedPaths, BehindAMatchAProductIsLeftAloneWhoseFolderStandsFurtherBehind)
{
    const std::wstring first = Folder1;
    AddProduct(L"R24.0", L"A", first + L";C:\\A");
    AddProduct(L"R24.0", L"B", std::wstring(first.size(), L'b') + L";" + first);
    ExpectConfirmed({});
}

} // namespace sitekeeper::e2e
