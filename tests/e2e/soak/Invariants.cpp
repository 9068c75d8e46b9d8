#include "e2e/soak/Invariants.h"

#include "e2e/support/Wide.h"
#include "support/HandleCount.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <psapi.h>
#include <stdexcept>

namespace sitekeeper::e2e {
namespace {

constexpr ULONGLONG PatienceMs = 8000; // until what was done has come through
constexpr DWORD PollMs = 20;

/// What the system's own tables, fonts and pickers may come to beyond the first look at a run.
constexpr unsigned HandlesSlack = 120;
constexpr std::size_t MiB = std::size_t{1024} * 1024;
constexpr std::size_t MemorySlack = 24 * MiB;

HWND ExpectedTop(const Scene& scene)
{
    switch (scene.model.Where()) {
    case Place::UserAccess: return scene.access->Handle();
    case Place::Shortcuts: return scene.shortcuts->Handle();
    default: return scene.main->Handle();
    }
}

/// Without asking the window, which may be on its way out.
std::string Describe(HWND window)
{
    if (window == nullptr) {
        return "none";
    }
    std::array<wchar_t, 128> title{};
    ::GetWindowTextW(window, title.data(), static_cast<int>(title.size()));
    return ToUtf8(WindowClass(window)) + " \"" + ToUtf8(title.data()) + "\"";
}

std::string Difference(const std::string& what, const std::wstring& expected, const std::wstring& found)
{
    return expected == found ? std::string()
                             : what + ": expected \"" + ToUtf8(expected) + "\", found \"" + ToUtf8(found) + "\"\n";
}

std::wstring Joined(Names names)
{
    std::sort(names.begin(), names.end());
    std::wstring text;
    for (const std::wstring& name : names) {
        text += name + L"|";
    }
    return text;
}

std::string BrokenWindows(const Scene& scene)
{
    const HWND top = ExpectedTop(scene);
    const HWND main = scene.main->Handle();
    std::string broken;
    std::vector<HWND> windows = scene.run->Windows();
    std::erase_if(windows, [](HWND window) { return WindowClass(window) == L"tooltips_class32"; });
    for (const HWND window : windows) {
        if (window != top && window != main) {
            broken += "a window too many: " + Describe(window) + "\n";
        }
    }
    for (const HWND window : {top, main}) {
        if (std::ranges::find(windows, window) == windows.end()) {
            broken += "a window is missing: " + Describe(window) + "\n";
        }
    }
    if ((::IsWindowEnabled(main) != FALSE) != (top == main)) {
        broken += top == main ? "the main dialog is disabled\n" : "the main dialog is enabled below another\n";
    }
    const GUITHREADINFO state = ThreadState(main);
    if (state.hwndActive != top) {
        broken += "active is " + Describe(state.hwndActive) + " instead of " + Describe(top) + "\n";
    } else if (state.hwndFocus != top && ::IsChild(top, state.hwndFocus) == FALSE) {
        broken += "the focus is in " + Describe(state.hwndFocus) + "\n";
    }
    if (state.hwndCapture != nullptr) {
        broken += "the mouse is held by " + Describe(state.hwndCapture) + "\n";
    }
    return broken;
}

std::string BrokenContents(const Scene& scene)
{
    const Model& model = scene.model;
    std::string broken =
        Difference("program path", model.Shown().program, scene.main->Text(Control::ProgramPath)) +
        Difference("application path", model.Shown().application, scene.main->Text(Control::ApplicationPath)) +
        Difference("datafiles path", model.Shown().datafiles, scene.main->Text(Control::DatafilesPath));
    if (model.Where() == Place::UserAccess) {
        for (const auto& [list, names] : model.Lists()) {
            broken += Difference("list " + std::to_string(static_cast<int>(list)), Joined(names),
                                 Joined(scene.access->NamesIn(list)));
        }
        broken += Difference("new user", model.NewUser(), WindowText(scene.access->Item(AccessControl::NewUser)));
    }
    if (model.Where() == Place::Shortcuts) {
        broken += Difference("marks", Joined(model.Rows()), Joined(scene.shortcuts->Rows()));
    }
    return broken;
}

std::string LookOnce(const Scene& scene)
{
    std::string broken;
    if (scene.model.Where() != Place::Nowhere) {
        if (scene.run->HasEnded()) {
            return "the program has ended\n";
        }
        broken = BrokenWindows(scene);
        broken += broken.empty() ? BrokenContents(scene) : "";
    }
    return broken.empty() ? scene.model.Expected(scene.before).ChangesTo(State::Take()) : broken;
}

/// A window that is just closing and a file that is just being written do not answer: all of it is looked at again.
std::string Look(const Scene& scene)
{
    try {
        return LookOnce(scene);
    } catch (const std::runtime_error& error) {
        return std::string(error.what()) + "\n";
    }
}

} // namespace

std::string BrokenInvariants(const Scene& scene)
{
    const ULONGLONG end = ::GetTickCount64() + PatienceMs;
    std::string broken = Look(scene);
    while (!broken.empty() && ::GetTickCount64() < end) {
        WaitAnswering(nullptr, PollMs);
        broken = Look(scene);
    }
    return broken;
}

std::string Usage::Measure(const Scene& scene)
{
    if (scene.model.Where() != Place::Main) {
        return {};
    }
    const HANDLE process = scene.run->Process();
    Figures now;
    now.handles = CountHandles(process);
    PROCESS_MEMORY_COUNTERS counters{};
    ::K32GetProcessMemoryInfo(process, &counters, sizeof counters);
    now.memory = counters.WorkingSetSize;
    if (const DWORD id = ::GetProcessId(process); id != m_process) {
        m_process = id;
        m_first = now;
        ++m_runs;
    }
    m_last = now;
    m_most = {std::max(m_most.handles, now.handles), std::max(m_most.memory, now.memory)};
    ++m_measured;
    std::string broken;
    if (now.handles > m_first.handles + HandlesSlack) {
        broken += std::to_string(now.handles) + " handles, at first " + std::to_string(m_first.handles) + "\n";
    }
    if (now.memory > m_first.memory + MemorySlack) {
        broken += std::to_string(now.memory / MiB) + " MiB, at first " + std::to_string(m_first.memory / MiB) + "\n";
    }
    return broken;
}

std::string Usage::Summary() const
{
    const auto text = [](const Figures& figures) {
        return std::to_string(figures.handles) + " handles and " + std::to_string(figures.memory / MiB) + " MiB";
    };
    return std::to_string(m_runs) + " runs of the program; the last began with " + text(m_first) + ", stood at " +
           text(m_last) + "; the most was " + text(m_most);
}

} // namespace sitekeeper::e2e
