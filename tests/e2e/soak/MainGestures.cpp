// Starting the program, and what can be done in its main dialog.
#include "e2e/soak/Gestures.h"
#include "e2e/support/FileTree.h"
#include "e2e/support/Installation.h"
#include "e2e/support/Wide.h"
#include "support/Input.h"

#include <iterator>

namespace sitekeeper::e2e {
namespace {

using Field = std::wstring FolderTexts::*;

constexpr ULONGLONG FocusMilliseconds = 400;
constexpr const wchar_t* HelpMissing = L"Couldn't find help file: \n";

void Start(Scene& scene)
{
    scene.run.emplace(Installation::Program());
    if (!scene.model.IsAdmitted()) {
        scene.Tell(L"refused");
        const MessageWindow refusal(*scene.run);
        refusal.Confirm();
        if (scene.run->WaitForEnd() != 0) {
            throw JourneyError("a refused program ends with an error");
        }
        scene.run.reset();
        scene.model.AdmitEverybody();
        return;
    }
    scene.main.emplace(*scene.run);
    scene.main->BringToFront();
    scene.model.Start();
}

// --- fields and folders ----------------------------------------------------------------------------------------------

void Type(Scene& scene, Control control, Field field)
{
    const std::wstring& text = scene.dice.Of(Model::SomeFolders());
    scene.Tell(text);
    scene.main->Type(control, text);
    scene.model.Type(field, text);
}

void TypeApplication(Scene& scene)
{
    Type(scene, Control::ApplicationPath, &FolderTexts::application);
}

void TypeDatafiles(Scene& scene)
{
    Type(scene, Control::DatafilesPath, &FolderTexts::datafiles);
}

/// Chooses a folder in the picker that stands, or cancels; what was chosen.
std::wstring Pick(Scene& scene)
{
    const FolderPicker picker(*scene.run);
    if (scene.dice.OneIn(4)) {
        scene.Tell(L"cancelled");
        picker.Cancel();
        return {};
    }
    std::wstring choice = scene.dice.Of(Model::RealFolders());
    choice.pop_back();
    scene.Tell(choice);
    picker.Choose(choice);
    return choice;
}

void BrowseApplication(Scene& scene)
{
    scene.main->Click(Control::BrowseApplication);
    scene.model.BrowseApplication(Pick(scene));
}

void BrowseDatafiles(Scene& scene)
{
    scene.main->Click(Control::BrowseDatafiles);
    scene.model.BrowseDatafiles(Pick(scene));
}

void SelectProgram(Scene& scene)
{
    scene.main->Choose(Command::SelectProgramPath);
    scene.model.SelectProgram(Pick(scene));
}

void OpenFolder(Scene& scene)
{
    static constexpr struct
    {
        Control button;
        Field field;
    } Rows[] = {
        {Control::OpenProgram, &FolderTexts::program},
        {Control::OpenApplication, &FolderTexts::application},
        {Control::OpenDatafiles, &FolderTexts::datafiles},
    };
    const auto& row = Rows[scene.dice.Roll(std::size(Rows))];
    const std::wstring folder = scene.model.Shown().*row.field;
    if (folder.empty() || !Exists(folder)) {
        scene.Tell(L"not, for it is missing: " + folder); // what the shell makes of it is its business
        return;
    }
    scene.Tell(folder);
    scene.main->Click(row.button);
    if (const std::wstring line = scene.explorer.AwaitCommandLine(*scene.run);
        !line.ends_with(L"explore \"" + folder + L"\"")) {
        throw JourneyError("explored is " + ToUtf8(line));
    }
    scene.model.Exchange();
}

// --- windows that come and go ----------------------------------------------------------------------------------------

void ShowAbout(Scene& scene)
{
    scene.main->Choose(scene.dice.OneIn(2) ? Command::About : Command::SystemAbout);
    const AboutWindow box(*scene.run);
    if (scene.dice.OneIn(2)) {
        scene.Tell(L"by Escape");
        scene.run->BringToFront(box.Handle());
        PressKey(VK_ESCAPE);
        box.AwaitClosed();
    } else {
        box.Confirm();
    }
}

void AskForHelp(Scene& scene)
{
    switch (scene.dice.Roll(4)) {
    case 0: scene.main->Click(Control::Help); break;
    case 1: scene.main->Choose(Command::HelpContents); break;
    case 2: scene.main->Choose(Command::Help); break;
    default:
        scene.Tell(L"by F1");
        PressKey(VK_F1);
        break;
    }
    ConfirmBox(scene, HelpMissing);
}

void AddTrustedPaths(Scene& scene)
{
    scene.main->Choose(Command::AddTrustedPaths);
    ConfirmBox(scene, L"The ORIVEL LX file paths have been added");
    scene.model.AddTrustedPaths();
}

void Uninstall(Scene& scene)
{
    scene.main->Choose(Command::Uninstall);
    ConfirmBox(scene, L"Could not find InstallShield uninstall information.");
}

void InstallOem(Scene& scene)
{
    scene.main->Choose(Command::InstallOem);
    if (!Pick(scene).empty()) {
        ConfirmBox(scene, L"Error creating process:\n");
        // The dialog was hidden meanwhile. On a screen without a window manager Wine then loses the focus now and then,
        // a moment after the dialog came back; an administrator would click it.
        scene.main->AwaitBack();
        scene.run->BringToFront(scene.main->Handle(), FocusMilliseconds);
    }
}

void Print(Scene& scene)
{
    scene.main->Choose(Command::Print);
    ConfirmBox(scene, L""); // that there is no printer, in the system's words
    scene.model.Exchange();
}

void SendUnknownCommand(Scene& scene)
{
    const auto number = static_cast<WPARAM>(40000 + scene.dice.Roll(1000));
    Ask(scene.main->Handle(), WM_COMMAND, number);
}

void MoveWindow(Scene& scene)
{
    scene.main->MoveTo(static_cast<int>(scene.dice.Roll(500)), static_cast<int>(scene.dice.Roll(400)));
}

void Minimise(Scene& scene)
{
    const HWND window = scene.main->Handle();
    ::PostMessageW(window, WM_SYSCOMMAND, SC_MINIMIZE, 0);
    scene.run->Await("the icon", [window] { return ::IsIconic(window) != FALSE; });
    ::PostMessageW(window, WM_SYSCOMMAND, SC_RESTORE, 0);
    scene.run->Await("the window", [window] { return ::IsIconic(window) == FALSE; });
}

void OpenAccess(Scene& scene)
{
    scene.main->Choose(Command::UserAccess);
    scene.access.emplace(*scene.run);
    scene.model.OpenAccess();
}

void OpenShortcuts(Scene& scene)
{
    scene.main->Choose(Command::ManageShortcuts);
    scene.shortcuts.emplace(*scene.run);
    scene.model.OpenShortcuts();
}

// --- the end ---------------------------------------------------------------------------------------------------------

void Apply(Scene& scene)
{
    const RECT place = scene.main->Rectangle();
    switch (scene.dice.Roll(3)) {
    case 0: scene.main->Click(Control::Ok); break;
    case 1: scene.main->Choose(Command::Exit); break;
    default:
        scene.Tell(L"by Enter");
        scene.main->Press(Control::DatafilesPath, VK_RETURN);
        break;
    }
    scene.model.Apply();
    scene.ExpectEnd(place);
}

void Leave(Scene& scene)
{
    const RECT place = scene.main->Rectangle();
    switch (scene.dice.Roll(3)) {
    case 0: scene.main->Click(Control::Cancel); break;
    case 1: scene.main->PressCloseBox(); break;
    default:
        scene.Tell(L"by Escape");
        PressKey(VK_ESCAPE);
        break;
    }
    scene.ExpectEnd(place);
}

constexpr Gesture OnMain[] = {
    {"start the program", Place::Nowhere, 1, &Start},
    {"type the application path", Place::Main, 3, &TypeApplication},
    {"type the datafiles path", Place::Main, 3, &TypeDatafiles},
    {"browse for the application folder", Place::Main, 2, &BrowseApplication},
    {"browse for the datafiles folder", Place::Main, 2, &BrowseDatafiles},
    {"select the program path", Place::Main, 2, &SelectProgram},
    {"open the folder", Place::Main, 2, &OpenFolder},
    {"About", Place::Main, 3, &ShowAbout},
    {"help that is missing", Place::Main, 3, &AskForHelp},
    {"add trusted paths", Place::Main, 1, &AddTrustedPaths},
    {"uninstall what is not registered", Place::Main, 1, &Uninstall},
    {"install AutoCAD OEM from", Place::Main, 1, &InstallOem},
    {"print without a printer", Place::Main, 1, &Print},
    {"send an unknown command", Place::Main, 1, &SendUnknownCommand},
    {"move the window", Place::Main, 1, &MoveWindow},
    {"minimise and restore", Place::Main, 1, &Minimise},
    {"open User Access", Place::Main, 6, &OpenAccess},
    {"open Manage Shortcuts", Place::Main, 4, &OpenShortcuts},
    {"apply and end", Place::Main, 2, &Apply},
    {"end without applying", Place::Main, 1, &Leave},
};

} // namespace

std::span<const Gesture> MainGestures()
{
    return OnMain;
}

} // namespace sitekeeper::e2e
