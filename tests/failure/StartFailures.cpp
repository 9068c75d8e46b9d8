// The program's start and its help, with each of their calls of the platform failing in turn.
#include "access/AccessLists.h"
#include "app/DialogsLibrary.h"
#include "app/ErrorReport.h"
#include "app/HelpFile.h"
#include "app/RefusalText.h"
#include "PlatformFailures.h"
#include "settings/Product.h"
#include "support/StateChecks.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

/// Lets the user in or says why not, as the start of the program does.
bool PassGate(const Platform& ports)
{
    const InstallationSettings settings = SettingsOn(ports);
    const std::wstring user = ports.accounts.UserName();
    const AccessLists lists(ports, settings, L"C:\\Suite\\SiteKeeper64.exe");
    if (lists.IsUserAllowed(user, AccessList::SiteKeeper) == Admission::Granted) {
        return true;
    }
    ports.messages.Show(WindowId::None, RefusalText(user), ProductTitle, MessageStyle::Error);
    return false;
}

int SweepGate(const std::wstring& user, const std::function<void(const FaultedRun&, bool isIn)>& check)
{
    bool isIn = false;
    return SweepFailures({[&user](MemoryPlatform& memory) {
                              SettingsOn(memory.Ports()).WriteFolder(SuiteFolder::Datafiles, L"N:\\Data\\");
                              memory.files.AddFile(L"N:\\Data\\UserDatafile.ini", "[SiteKeeper]\nbob = bob\n");
                              memory.accounts.SetUserName(user);
                              memory.messages.AnswerAll(Answer::Ok);
                          },
                          [&isIn](const Platform& ports) {
                              isIn = false;
                              isIn = PassGate(ports);
                          },
                          [&](const FaultedRun& run) {
                              EXPECT_FALSE(run.raised);
                              EXPECT_EQ(Removed(run.before, run.after), State{});
                              check(run, isIn);
                          }});
}

std::wstring Refusal(const std::wstring& user)
{
    return L"box LX Plus 2023: " + RefusalText(user);
}

int LetANamedUserIn()
{
    return SweepGate(L"Bob", [](const FaultedRun& run, bool isIn) {
        const bool isNameless = run.failed == L"user name";
        EXPECT_EQ(isIn, !isNameless); // a list that cannot be read lets everybody in
        EXPECT_EQ(Added(run.before, run.after), isNameless ? State{Refusal(L"")} : State{});
    });
}

int RefuseAUser()
{
    return SweepGate(L"alice", [](const FaultedRun& run, bool isIn) {
        EXPECT_EQ(isIn, Is(run, L"read ")); // the folder or the file
        State told{Refusal(run.failed == L"user name" ? L"" : L"alice")};
        if (isIn || Is(run, L"show ")) {
            told.clear();
        }
        EXPECT_EQ(Added(run.before, run.after), told);
    });
}

const std::wstring First = L"C:\\One\\ORIVEL\\ORSWDialogsOEM64.dll";
const std::wstring Second = L"D:\\Two\\ORIVEL\\ORSWDialogsOEM64.dll";

ModuleId Load(const Platform& ports)
{
    return LoadDialogsLibrary(SettingsOn(ports), ports.files, ports.modules, ports.messages);
}

int LoadTheDialogsLibrary()
{
    ModuleId library = ModuleId::None;
    const Sweep sweep{[](MemoryPlatform& memory) {
                          memory.environment.Set(L"CommonProgramFiles", L"C:\\One");
                          memory.registry.SetText(Hive::LocalMachine, L"Software\\Microsoft\\Windows\\CurrentVersion",
                                                  L"CommonFilesDir", L"D:\\Two");
                          memory.files.AddFile(First);
                          memory.files.AddFile(Second);
                          memory.modules.AddLibrary(First);
                          memory.modules.AddLibrary(Second);
                          memory.messages.AnswerAll(Answer::Ok);
                      },
                      [&library](const Platform& ports) { library = Load(ports); },
                      [&library](const FaultedRun& run) {
                          EXPECT_FALSE(run.raised);
                          if (Is(run, L"load ")) {
                              EXPECT_EQ(library, ModuleId::None);
                              EXPECT_EQ(Added(run.before, run.after),
                                        State{L"box (no caption): Couldn't load dll file: \n" + First +
                                              L"\n\nPlease check software installation."});
                          } else {
                              EXPECT_NE(library, ModuleId::None);
                              EXPECT_EQ(Added(run.before, run.after), State{L"loaded " + Second});
                          }
                      }};
    return SweepFailures(sweep); // the variable, the file, the loading
}

int MissTheDialogsLibrary()
{
    ModuleId library = ModuleId::None;
    const Sweep sweep{[](MemoryPlatform& memory) { memory.messages.AnswerAll(Answer::Ok); },
                      [&library](const Platform& ports) { library = Load(ports); },
                      [&library](const FaultedRun& run) {
                          EXPECT_EQ(library, ModuleId::None);
                          const std::size_t boxes = Is(run, L"show ") ? 0 : 1;
                          EXPECT_EQ(Added(run.before, run.after).size(), boxes);
                      }};
    return SweepFailures(sweep); // variable, file, registry value, file, message
}

constexpr const wchar_t* HelpFile = L"C:\\Help\\SiteKeeper.chm";

int SweepHelp(HelpPage page)
{
    const Sweep sweep{[](MemoryPlatform& memory) {
                          memory.files.AddFile(HelpFile);
                          memory.messages.AnswerAll(Answer::Ok);
                      },
                      [page](const Platform& ports) { ShowHelp(ports, {}, page, HelpFile); },
                      [](const FaultedRun& run) {
                          const std::size_t boxes = Is(run, L"exists ") ? 1 : 0;
                          EXPECT_EQ(Added(run.before, run.after).size(), boxes);
                          EXPECT_EQ(Removed(run.before, run.after), State{});
                      }};
    return SweepFailures(sweep);
}

int OpenTheHelp()
{
    return SweepHelp(HelpPage::Contents);
}
int OpenTheIntroduction()
{
    return SweepHelp(HelpPage::Introduction);
}

int MissTheHelp()
{
    const Sweep sweep{[](MemoryPlatform& memory) { memory.messages.AnswerAll(Answer::Ok); },
                      [](const Platform& ports) { ShowHelp(ports, {}, HelpPage::Contents, HelpFile); },
                      [](const FaultedRun& run) {
                          const std::size_t boxes = Is(run, L"show ") ? 0 : 1;
                          EXPECT_EQ(Added(run.before, run.after).size(), boxes);
                      }};
    return SweepFailures(sweep);
}

int ReportAnError()
{
    const Sweep sweep{[](MemoryPlatform& memory) { memory.messages.AnswerAll(Answer::Ok); },
                      [](const Platform& ports) {
                          ReportError(ports.messages, WindowId::None,
                                      std::make_exception_ptr(PlatformError(ResultCode::Fail, L"A sentence.")));
                      },
                      [](const FaultedRun& run) {
                          EXPECT_FALSE(run.raised);
                          EXPECT_EQ(run.after, run.before);
                      }};
    return SweepFailures(sweep);
}

} // namespace

SweptOperations StartOperations()
{
    return {{"let a named user in", LetANamedUserIn},
            {"refuse a user", RefuseAUser},
            {"load the dialogs library", LoadTheDialogsLibrary},
            {"miss the dialogs library", MissTheDialogsLibrary},
            {"open the help", OpenTheHelp},
            {"open the help's introduction", OpenTheIntroduction},
            {"miss the help", MissTheHelp},
            {"report an error", ReportAnError}};
}

} // namespace sitekeeper
