// A long visit to the program: the run under way, what is expected of it, and what was done so far.
#pragma once

#include "e2e/soak/Dice.h"
#include "e2e/soak/Model.h"
#include "e2e/support/EchoProgram.h"
#include "e2e/support/Pages.h"
#include "e2e/support/ProgramRun.h"
#include "e2e/support/ShortcutsWindow.h"
#include "e2e/support/State.h"
#include "e2e/support/UserAccessWindow.h"

#include <optional>
#include <string>
#include <vector>

namespace sitekeeper::e2e {

struct Scene
{
    /// All begins with the machine as it is. `standIn` explores folders in the place of the system's explorer.
    Scene(std::uint64_t seed, Model expected, EchoProgram standIn)
        : dice(seed), model(std::move(expected)), before(State::Take()), explorer(std::move(standIn))
    {}

    /// Says more about the gesture under way, for the history.
    void Tell(const std::wstring& detail);

    /// The program ended, by itself and well; its main window last stood there.
    void ExpectEnd(const RECT& place);

    Dice dice;
    Model model;
    State before;
    EchoProgram explorer;
    std::vector<std::string> history;

    std::optional<ProgramRun> run;
    std::optional<MainWindow> main;
    std::optional<UserAccessWindow> access;
    std::optional<ShortcutsWindow> shortcuts;
};

} // namespace sitekeeper::e2e
