// Works a modal dialog from inside: a script of gestures, one after the other, while the dialog's own loop runs.
#pragma once

#include <windows.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace sitekeeper {

/// One step of a script: asked again and again until it says that it is done. It must not wait by itself; a step that
/// opens another modal window must post, not send, what opens it.
struct DriverStep
{
    std::string name;
    std::function<bool()> attempt;
};

/// Runs its steps from a timer, so they run in every modal loop of this thread. A script that does not come to its end
/// in time closes all dialogs of the thread, so that the test goes on, and fails the test.
class ModalDriver
{
public:
    static constexpr DWORD PatienceMs = 8000;

    explicit ModalDriver(std::vector<DriverStep> steps, DWORD patienceMs = PatienceMs);
    ModalDriver(const ModalDriver&) = delete;
    ModalDriver& operator=(const ModalDriver&) = delete;

    /// Fails the test when the script is not finished.
    ~ModalDriver();

    [[nodiscard]] bool IsFinished() const { return m_next == m_steps.size(); }
    [[nodiscard]] bool IsTimedOut() const { return m_isTimedOut; }

    /// For tests of the driver itself: an unfinished script does not fail the test. The name of the step it stopped at.
    std::string Forgive();

private:
    static LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                      DWORD_PTR self);
    void Tick();

    std::vector<DriverStep> m_steps;
    std::size_t m_next = 0;
    ULONGLONG m_deadline;
    HWND m_timerWindow;
    bool m_isTimedOut = false;
    bool m_isForgiven = false;
};

} // namespace sitekeeper
