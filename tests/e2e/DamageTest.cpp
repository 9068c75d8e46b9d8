// A damaged registry: every command is tried on it, the program goes on, and what it wrote is whole again.
#include "e2e/Journey.h"
#include "e2e/support/FileTree.h"
#include "e2e/support/ShortcutsWindow.h"
#include "e2e/support/UserAccessWindow.h"

#include <functional>
#include <ostream>

namespace sitekeeper::e2e {
namespace {

constexpr const wchar_t* UninstallKey =
    L"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\{6C1F2A3B-4D5E-4F60-8A71-92B3C4D5E6F7}";
constexpr const wchar_t* InstallationKey = L"Software\\ORIVEL\\LX Plus\\2023\\Installation";
constexpr int AboutText = 1008;

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

class Damage : public Journey, public ::testing::WithParamInterface<Kind>
{
protected:
    void TearDown() override { RemoveKey(Hive::Machine, UninstallKey); }

    static void DamageEverything()
    {
        const auto damage = [](Hive hive, const wchar_t* key, std::initializer_list<const wchar_t*> names) {
            for (const wchar_t* const name : names) {
                WriteValue(hive, key, name, GetParam().make());
            }
        };
        damage(Hive::Machine, SuiteKey, {L"LocalAppPath", L"NetworkAppPath", L"DatafilesPath", L"ProductUpdate"});
        damage(Hive::Machine, InstallationKey, {L"Application Path"});
        damage(Hive::User, ReminderKey, {L"CheckWebVersionDays"});
        damage(Hive::User, PositionKey, {L"Application"});
        damage(Hive::Machine, L"Software\\Autodesk\\AutoCAD\\R24.0\\P\\Variables\\TRUSTEDPATHS", {L""});
        damage(Hive::Machine, UninstallKey, {L"UninstallString"});
    }

    static void OpenAbout(const ProgramRun& run, const MainWindow& main)
    {
        main.Choose(Command::About);
        const HWND box =
            run.AwaitWindow("the About box", [](HWND window) { return WindowText(window) == L"About Site Keeper"; });
        EXPECT_TRUE(WindowText(::GetDlgItem(box, AboutText)).starts_with(L"Site Keeper Version "));
        ::PostMessageW(box, WM_COMMAND, IDOK, 0);
        run.Await("the About box to close", [box] { return ::IsWindow(box) == FALSE; });
    }

    static void ConfirmMessage(const ProgramRun& run)
    {
        const MessageWindow message(run);
        message.Confirm();
    }
};

} // namespace

TEST_P(Damage, NoCommandStumblesAndOkMakesItWhole)
{
    DamageEverything();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    OpenAbout(run, main);
    main.Choose(Command::AddTrustedPaths);
    ConfirmMessage(run);
    main.Choose(Command::ManageShortcuts);
    ShortcutsWindow(run).Leave(IDOK);
    main.Choose(Command::UserAccess);
    UserAccessWindow(run).Leave(AccessControl::Cancel);
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
