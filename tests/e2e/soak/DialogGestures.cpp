// What can be done in User Access and in Manage Shortcuts.
#include "e2e/soak/Gestures.h"
#include "e2e/support/Wide.h"
#include "support/Input.h"

#include <algorithm>

namespace sitekeeper::e2e {
namespace {

/// One or two names of a list, and what they are called in the history.
Names SomeOf(Scene& scene, AccessControl list)
{
    Names shown = scene.model.Lists().at(list);
    std::sort(shown.begin(), shown.end());
    Names chosen{scene.dice.Of(shown)};
    if (const std::wstring& second = scene.dice.Of(shown); scene.dice.OneIn(3) && second != chosen.front()) {
        chosen.push_back(second);
    }
    for (const std::wstring& name : chosen) {
        scene.Tell(L"\"" + name + L"\"");
    }
    return chosen;
}

AccessControl SomeList(Scene& scene, const wchar_t* word)
{
    const AccessControl list = scene.dice.Of(AccessListControls);
    scene.Tell(std::wstring(word) + L" " + std::to_wstring(static_cast<int>(list)));
    return list;
}

/// Chooses a list and names of it, and selects them.
struct Selection
{
    explicit Selection(Scene& scene) : list(SomeList(scene, L"in")), names(SomeOf(scene, list))
    {
        scene.access->Select(list, names);
    }
    AccessControl list;
    Names names;
};

// --- User Access -----------------------------------------------------------------------------------------------------

void Add(Scene& scene)
{
    const std::wstring& name = scene.dice.Of(Model::SomeNames());
    scene.Tell(L"\"" + name + L"\"");
    scene.access->Type(name);
    scene.access->PushAndWait(AccessControl::Add);
    scene.model.Add(name);
}

void Refresh(Scene& scene)
{
    scene.access->PushAndWait(AccessControl::Refresh);
    scene.model.Refresh();
}

void Drag(Scene& scene)
{
    const Selection selected(scene);
    const AccessControl target = SomeList(scene, L"to");
    AvoidDoubleClick();
    scene.access->Drag(selected.list, selected.names.front(), target);
    scene.model.Move(selected.list, selected.names, target);
}

void DragNowhere(Scene& scene)
{
    const Selection selected(scene);
    AvoidDoubleClick();
    if (scene.dice.OneIn(2)) {
        scene.Tell(L"and Escape");
        scene.access->DragAndEscape(selected.list, selected.names.front(), SomeList(scene, L"over"));
    } else {
        RECT button{};
        ::GetWindowRect(scene.access->Item(AccessControl::Ok), &button);
        scene.access->DragTo(selected.list, selected.names.front(), {button.left + 9, button.top + 9});
    }
}

void Copy(Scene& scene)
{
    const Selection selected(scene);
    scene.access->PressWithControl('C');
    scene.model.Copy(selected.names);
}

void Cut(Scene& scene)
{
    const Selection selected(scene);
    scene.access->PressWithControl('X');
    scene.model.Cut(selected.list, selected.names);
}

void Delete(Scene& scene)
{
    const Selection selected(scene);
    scene.access->Press(VK_DELETE);
    scene.model.Delete(selected.list, selected.names);
}

void DeleteAll(Scene& scene)
{
    const AccessControl list = SomeList(scene, L"in");
    const Names all = scene.model.Lists().at(list);
    scene.access->Select(list, {});
    scene.access->PressWithControl('A');
    scene.access->Press(VK_DELETE);
    scene.model.Delete(list, all);
}

void Paste(Scene& scene)
{
    const AccessControl list = SomeList(scene, L"into");
    if (!scene.model.CanPaste()) {
        scene.Tell(L"nothing");
        return;
    }
    scene.access->Select(list, {});
    scene.access->PressWithControl('V');
    scene.model.Paste(list);
}

void AskForAccessHelp(Scene& scene)
{
    scene.access->Push(AccessControl::Help);
    ConfirmBox(scene, L"Couldn't find help file: \n");
}

void CloseAccess(Scene& scene, int button)
{
    const HWND window = scene.access->Handle();
    if (button == IDCANCEL && scene.dice.OneIn(2)) {
        scene.Tell(L"by Escape");
        PressKey(VK_ESCAPE);
        scene.run->Await("User Access to close", [window] { return ::IsWindow(window) == FALSE; });
    } else {
        scene.access->Leave(static_cast<AccessControl>(button));
    }
    scene.access.reset();
    scene.model.CloseAccess(button);
}

void TakeAccess(Scene& scene)
{
    CloseAccess(scene, IDOK);
}

void CancelAccess(Scene& scene)
{
    CloseAccess(scene, IDCANCEL);
}

// --- Manage Shortcuts ------------------------------------------------------------------------------------------------

std::size_t SomeRow(Scene& scene)
{
    const std::size_t row = scene.dice.Roll(scene.model.Rows().size());
    scene.Tell(std::to_wstring(row));
    return row;
}

void ClickMark(Scene& scene)
{
    const std::size_t row = SomeRow(scene);
    AvoidDoubleClick();
    scene.shortcuts->ClickCheckBox(static_cast<int>(row));
    scene.model.Toggle(row);
    scene.shortcuts->AwaitRows(scene.model.Rows());
}

void ToggleMarkByKeys(Scene& scene)
{
    const std::size_t row = SomeRow(scene);
    scene.shortcuts->Press(VK_HOME);
    for (std::size_t step = 0; step < row; ++step) {
        scene.shortcuts->Press(VK_DOWN);
    }
    scene.shortcuts->Press(VK_SPACE);
    scene.model.Toggle(row);
    scene.shortcuts->AwaitRows(scene.model.Rows());
}

void CloseShortcuts(Scene& scene, int button)
{
    scene.shortcuts->Leave(button);
    scene.shortcuts.reset();
    scene.model.CloseShortcuts(button);
}

void TakeShortcuts(Scene& scene)
{
    CloseShortcuts(scene, IDOK);
}

void CancelShortcuts(Scene& scene)
{
    CloseShortcuts(scene, IDCANCEL);
}

constexpr Gesture OnDialogs[] = {
    {"add", Place::UserAccess, 6, &Add},
    {"refresh", Place::UserAccess, 1, &Refresh},
    {"drag", Place::UserAccess, 10, &Drag},
    {"drag nowhere", Place::UserAccess, 2, &DragNowhere},
    {"copy", Place::UserAccess, 2, &Copy},
    {"cut", Place::UserAccess, 2, &Cut},
    {"delete", Place::UserAccess, 2, &Delete},
    {"delete all", Place::UserAccess, 1, &DeleteAll},
    {"paste", Place::UserAccess, 4, &Paste},
    {"help that is missing", Place::UserAccess, 1, &AskForAccessHelp},
    {"OK of User Access", Place::UserAccess, 3, &TakeAccess},
    {"Cancel of User Access", Place::UserAccess, 1, &CancelAccess},
    {"click the mark of row", Place::Shortcuts, 6, &ClickMark},
    {"toggle by keys the mark of row", Place::Shortcuts, 3, &ToggleMarkByKeys},
    {"OK of Manage Shortcuts", Place::Shortcuts, 3, &TakeShortcuts},
    {"Cancel of Manage Shortcuts", Place::Shortcuts, 1, &CancelShortcuts},
};

} // namespace

std::span<const Gesture> DialogGestures()
{
    return OnDialogs;
}

} // namespace sitekeeper::e2e
