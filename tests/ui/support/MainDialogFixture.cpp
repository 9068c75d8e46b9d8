#include "support/MainDialogFixture.h"

#include "app/DlgOccManager.h"
#include "platform/PlatformError.h"
#include "support/Input.h"
#include "support/SuiteFixture.h"
#include "text/Utf16.h"

#include <memory>
#include <utility>

namespace sitekeeper {

DialogWorldTest::DialogWorldTest()
    : m_platform{memory.registry,  memory.files,       m_shell,         memory.folders, memory.messages,
                 m_libraryModules, memory.environment, memory.accounts, m_clock,        memory.help,
                 memory.codePage,  memory.clipboard,   memory.web,      m_processes,    memory.versions,
                 memory.printer}
{
    InstallShortcuts(memory);
    StoreFolder(L"LocalAppPath", L"C:\\Suite\\");
    StoreFolder(L"NetworkAppPath", L"N:\\Suite\\");
    StoreFolder(L"DatafilesPath", L"N:\\Suite\\Data\\");
    memory.registry.SetText(Hive::CurrentUser, ReminderKey, L"CheckWebVersionDate", L"2024-05-06 07:08:09");
    memory.registry.SetNumber(Hive::CurrentUser, ReminderKey, L"CheckWebVersionDays", 14);
    memory.environment.Set(L"CommonProgramFiles", L"C:\\Common");
    memory.files.AddFile(L"C:\\Common\\ORIVEL\\ORSWDialogsOEM64.dll");
}

DriverStep DialogWorldTest::Do(std::string name, Gesture gesture)
{
    return {std::move(name), [this, gesture = std::move(gesture)] {
                gesture(Page());
                return true;
            }};
}

DriverStep DialogWorldTest::Await(std::string name, Question question)
{
    return {std::move(name), [this, question = std::move(question)] { return question(Page()); }};
}

DriverStep DialogWorldTest::Press(int button)
{
    return Do("press button " + std::to_string(button), [button](const MainDialogPage& page) { page.Click(button); });
}

DriverStep DialogWorldTest::Choose(int command)
{
    return Do("choose command " + std::to_string(command),
              [command](const MainDialogPage& page) { page.Command(command); });
}

DriverStep DialogWorldTest::ChooseSystem(int command)
{
    return Do("choose system command " + std::to_string(command),
              [command](const MainDialogPage& page) { page.SystemCommand(command); });
}

DriverStep DialogWorldTest::Key(WORD key)
{
    return {"press key " + std::to_string(key), [key] {
                PressKey(key);
                return true;
            }};
}

DriverStep DialogWorldTest::AwaitBoxes(std::size_t count)
{
    return Await("wait for a message box",
                 [this, count](const MainDialogPage& /*page*/) { return memory.messages.Shown().size() == count; });
}

std::wstring DialogWorldTest::Stored(Hive hive, const std::wstring& key, const wchar_t* name) const
{
    const auto value = memory.registry.Find(hive, key, name);
    return value ? DecodeUtf16(value->bytes) : L"(none)";
}

InstallationFolders DialogWorldTest::StoredFolders() const
{
    return {Stored(Hive::LocalMachine, SuiteKey, L"LocalAppPath"),
            Stored(Hive::LocalMachine, SuiteKey, L"NetworkAppPath"),
            Stored(Hive::LocalMachine, SuiteKey, L"DatafilesPath")};
}

std::wstring DialogWorldTest::StoredPosition() const
{
    return Stored(Hive::CurrentUser, WindowPositionKey, L"Application");
}

void DialogWorldTest::StoreFolder(const wchar_t* name, const std::wstring& path)
{
    memory.registry.SetText(Hive::LocalMachine, SuiteKey, name, path);
}

void DialogWorldTest::RemoveFolder(const wchar_t* name)
{
    memory.registry.RemoveValue(Hive::LocalMachine, SuiteKey, name);
}

Platform DialogWorldTest::WithSystemWindows()
{
    return {memory.registry,    memory.files,    m_shell,         m_systemFolders, m_systemMessages, m_libraryModules,
            memory.environment, memory.accounts, m_clock,         memory.help,     memory.codePage,  memory.clipboard,
            memory.web,         m_processes,     memory.versions, m_systemPrinter};
}

MainDialogTest::MainDialogTest()
    : m_app(::GetModuleHandleW(nullptr), m_platform, m_programFile, {}),
      m_settings(m_platform.registry, m_platform.environment, m_platform.clock)
{
    m_app.EnableControlContainer(std::make_unique<CDlgOccManager>());
    m_app.SetRegistryKey(ProfileRegistryKey);
}

INT_PTR MainDialogTest::RunOn(const Platform& platform, InstallationSettings& settings, std::vector<DriverStep> steps)
{
    steps.insert(steps.begin(), Await("wait for the dialog", [](const MainDialogPage& page) { return page.IsOpen(); }));
    CSiteKeeperDlg dialog(m_app, {platform, settings, m_library, m_programFile, m_helpFile});
    m_dialog = &dialog;
    m_app.SetMainWindow(&dialog);
    INT_PTR result = 0;
    {
        const ModalDriver driver(std::move(steps), m_patienceMs);
        result = dialog.DoModal();
    }
    m_app.SetMainWindow(nullptr);
    m_dialog = nullptr;
    return result;
}

std::optional<ResultCode> MainDialogTest::RunRefused()
{
    CSiteKeeperDlg dialog(m_app, {m_platform, m_settings, m_library, m_programFile, m_helpFile});
    m_dialog = &dialog;
    ModalDriver driver({Await("a dialog that must not open", [](const MainDialogPage& page) { return page.IsOpen(); }),
                        Choose(IDCANCEL)});
    std::optional<ResultCode> code;
    try {
        dialog.DoModal();
        ADD_FAILURE() << "the dialog's initialisation raised no error";
    } catch (const PlatformError& error) {
        code = error.Code();
    }
    EXPECT_EQ(driver.Forgive(), "a dialog that must not open");
    EXPECT_EQ(dialog.Handle(), nullptr);
    m_dialog = nullptr;
    return code;
}

MainDialogPage MainDialogTest::Page() const
{
    // NOLINTNEXTLINE(modernize-return-braced-init-list): the inherited constructor is explicit
    return MainDialogPage(m_dialog != nullptr ? m_dialog->Handle() : nullptr);
}

ProgramTest::ProgramTest()
{
    m_clock.onNow = [this] { return m_now++; };
}

int ProgramTest::Run(std::vector<DriverStep> steps)
{
    if (!steps.empty()) {
        steps.insert(steps.begin(),
                     Await("wait for the main dialog", [](const MainDialogPage& page) { return page.IsOpen(); }));
    }
    m_app.emplace(m_instance, m_platform, m_programFile, m_reminder);
    const ModalDriver driver(std::move(steps));
    return m_app->Run();
}

MainDialogPage ProgramTest::Page() const
{
    const CWnd* const main = m_app ? m_app->MainWindow() : nullptr;
    // NOLINTNEXTLINE(modernize-return-braced-init-list): the inherited constructor is explicit
    return MainDialogPage(main != nullptr ? main->Handle() : nullptr);
}

} // namespace sitekeeper
