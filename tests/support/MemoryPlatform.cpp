#include "support/MemoryPlatform.h"

#include <algorithm>
#include <iterator>

namespace sitekeeper {
namespace {

void Append(State& state, const std::wstring& kind, const std::vector<std::wstring>& lines)
{
    for (const std::wstring& line : lines) {
        state.push_back(kind + line);
    }
}

} // namespace

Platform MemoryPlatform::Ports()
{
    return {registry, files, shell,    folders,   messages, modules,   environment, accounts,
            clock,    help,  codePage, clipboard, web,      processes, versions,    printer};
}

State MemoryPlatform::CurrentState() const
{
    State state;
    Append(state, L"registry ", registry.Listing());
    Append(state, L"file ", files.Listing());
    Append(state, L"explored ", shell.Explored());
    Append(state, L"opened ", shell.Opened());
    Append(state, L"loaded ", modules.Loaded());
    Append(state, L"started ", processes.Listing());
    Append(state, L"printed ", printer.Listing());
    for (const ScriptedMessageBoxes::Box& box : messages.Shown()) {
        state.push_back(L"box " + box.caption.value_or(L"(no caption)") + L": " + box.text);
    }
    for (const MemoryHelpViewer::Opened& opened : help.AllOpened()) {
        state.push_back(L"help " + opened.path);
    }
    for (const MemoryShell::OpenedProgram& opened : shell.OpenedPrograms()) {
        state.push_back(L"program " + opened.program + L" : " + opened.parameters);
    }
    if (shell.ComponentDepth() != 0) {
        state.push_back(L"component runtime entered and not left: " + std::to_wstring(shell.ComponentDepth()));
    }
    if (modules.StrayReleases() != 0) {
        state.push_back(L"libraries released too often: " + std::to_wstring(modules.StrayReleases()));
    }
    if (printer.OpenDocuments() != 0) {
        state.push_back(L"documents still held: " + std::to_wstring(printer.OpenDocuments()));
    }
    std::sort(state.begin(), state.end());
    return state;
}

InstallationSettings SettingsOn(const Platform& platform)
{
    return {platform.registry, platform.environment, platform.clock};
}

State Added(const State& before, const State& after)
{
    State lines;
    std::set_difference(after.begin(), after.end(), before.begin(), before.end(), std::back_inserter(lines));
    return lines;
}

State Removed(const State& before, const State& after)
{
    State lines;
    std::set_difference(before.begin(), before.end(), after.begin(), after.end(), std::back_inserter(lines));
    return lines;
}

} // namespace sitekeeper
