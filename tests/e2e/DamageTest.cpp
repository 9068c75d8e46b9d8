// A damaged registry: every command is tried on it, the program goes on, and what it wrote is whole again.
#include "e2e/Journey.h"
#include "e2e/support/FileTree.h"
#include "e2e/support/ShortcutsWindow.h"
#include "e2e/support/UserAccessWindow.h"

#include <functional>
#include <list>
#include <ostream>
#include <vector>

namespace sitekeeper::e2e {
namespace {

/// What somebody else put into each value that the program reads.
struct Kind
{
    const char* name;
    std::function<RegistryValue()> make;
};
std::ostream& operator<<(std::ostream& out, const Kind& kind)
{
    return out << kind.name;
}

RegistryValue Bytes(DWORD type, std::size_t count, unsigned char each)
{
    return {type, std::vector<std::byte>(count, std::byte{each})};
}

/// A key that the program reads, and the names of its values.
struct ReadKey
{
    Hive hive;
    const wchar_t* key;
    std::vector<const wchar_t*> names;
};

std::vector<ReadKey> KeysRead()
{
    return {
        {Hive::Machine, SuiteKey, {L"LocalAppPath", L"NetworkAppPath", L"DatafilesPath", L"ProductUpdate"}},
        {Hive::Machine, InstallationKey, {L"Application Path"}},
        {Hive::User, ReminderKey, {L"CheckWebVersionDays"}},
        {Hive::User, PositionKey, {L"Application"}},
        {Hive::Machine, L"Software\\Autodesk\\AutoCAD\\R24.0\\P\\Variables\\TRUSTEDPATHS", {L""}},
        {Hive::Machine, UninstallKey, {L"UninstallString"}},
    };
}

class DamagedRegistry : public Journey
{
protected:
    void TearDown() override { RemoveKey(Hive::Machine, UninstallKey); }

    static void WriteEverywhere(const std::function<RegistryValue()>& make)
    {
        for (const ReadKey& key : KeysRead()) {
            for (const wchar_t* const name : key.names) {
                WriteValue(key.hive, key.key, name, make());
            }
        }
    }

    /// Every command that comes back to the main dialog.
    static void TryEachCommand(const ProgramRun& run, const MainWindow& main)
    {
        OpenAbout(run, main);
        main.Choose(Command::AddTrustedPaths);
        ConfirmMessage(run);
        main.Choose(Command::ManageShortcuts);
        ShortcutsWindow(run).Leave(IDOK);
        main.Choose(Command::UserAccess);
        UserAccessWindow(run).Leave(AccessControl::Cancel);
    }

    static void OpenAbout(const ProgramRun& run, const MainWindow& main)
    {
        main.Choose(Command::About);
        const AboutWindow box(run);
        EXPECT_TRUE(box.Text().starts_with(L"Site Keeper Version "));
        box.Confirm();
    }

    static void ConfirmMessage(const ProgramRun& run)
    {
        const MessageWindow message(run);
        message.Confirm();
    }
};

class Damage : public DamagedRegistry, public ::testing::WithParamInterface<Kind>
{};

} // namespace

TEST_F(DamagedRegistry, KeysThatMayNotBeOpenedAreAsGoodAsNoneAndNothingIsLost)
{
    WriteEverywhere([] { return TextValue(L"D:\\Stored\\"); });
    const State before = State::Take();
    {
        std::list<LockedKey> locked;
        for (const ReadKey& key : KeysRead()) {
            locked.emplace_back(key.hive, key.key);
        }
        const ProgramRun run(Installation::Program());
        const MainWindow main(run);
        EXPECT_EQ(main.Text(Control::ProgramPath), L"C:\\Suite\\");
        EXPECT_EQ(main.Text(Control::ApplicationPath), L"C:\\Suite\\");
        EXPECT_EQ(main.Text(Control::DatafilesPath), L"C:\\Suite\\Datafiles\\");
        TryEachCommand(run, main);
        main.Type(Control::ApplicationPath, L"C:\\NewServer\\Suite\\");
        main.Click(Control::Ok);
        EXPECT_EQ(run.WaitForEnd(), 0U);
    }
    EXPECT_TRUE(IsNow(before));
}

TEST_P(Damage, NoCommandStumblesAndOkMakesItWhole)
{
    WriteEverywhere(GetParam().make);
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    TryEachCommand(run, main);
    main.Type(Control::ApplicationPath, L"C:\\NewServer\\Suite\\");
    main.Type(Control::DatafilesPath, L"C:\\NewServer\\Data\\");
    const std::wstring program = main.Text(Control::ProgramPath);
    main.Click(Control::Ok);
    EXPECT_EQ(run.WaitForEnd(), 0U);
    const auto stored = [](const wchar_t* name) {
        const auto value = ReadValue(Hive::Machine, SuiteKey, name);
        return value ? Describe(*value) : L"(none)";
    };
    EXPECT_EQ(stored(L"LocalAppPath"), Describe(TextValue(program)));
    EXPECT_EQ(stored(L"NetworkAppPath"), Describe(TextValue(L"C:\\NewServer\\Suite\\")));
    EXPECT_EQ(stored(L"DatafilesPath"), Describe(TextValue(L"C:\\NewServer\\Data\\")));
    EXPECT_EQ(ReadValue(Hive::User, ReminderKey, L"CheckWebVersionDate").value_or(RegistryValue{}).type, DWORD{REG_SZ});
    EXPECT_EQ(ReadValue(Hive::User, ReminderKey, L"CheckWebVersionDays").value_or(RegistryValue{}).type,
              DWORD{REG_DWORD});
}

INSTANTIATE_TEST_SUITE_P(Of, Damage,
                         ::testing::Values(Kind{"FourThousandCharacters",
                                                [] { return TextValue(std::wstring(4000, L'x')); }},
                                           Kind{"NoBytes", [] { return Bytes(REG_SZ, 0, 0); }},
                                           Kind{"OneByte", [] { return Bytes(REG_SZ, 1, 'x'); }},
                                           Kind{"NoTerminator", [] { return Bytes(REG_SZ, 2048, 'x'); }},
                                           Kind{"LoneHalves", [] { return Bytes(REG_SZ, 200, 0xD8); }},
                                           Kind{"ABinaryValue", [] { return Bytes(REG_BINARY, 37, 0xFF); }},
                                           Kind{"ANumber", [] { return NumberValue(0xFFFFFFFF); }},
                                           Kind{"SeveralTexts",
                                                [] {
                                                    RegistryValue value =
                                                        TextValue(std::wstring(L"C:\\a\0D:\\b\0", 10));
                                                    value.type = REG_MULTI_SZ;
                                                    return value;
                                                }}),
                         [](const auto& kind) { return std::string(kind.param.name); });

} // namespace sitekeeper::e2e
