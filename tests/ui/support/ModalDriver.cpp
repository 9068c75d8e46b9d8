#include "support/ModalDriver.h"

#include <windows.h>

#include <commctrl.h>

#include <exception>
#include <gtest/gtest.h>
#include <utility>

namespace sitekeeper {
namespace {

constexpr UINT_PTR TimerId = 1;
constexpr UINT PollMs = 10;

BOOL CALLBACK CloseDialog(HWND window, LPARAM /*unused*/)
{
    wchar_t className[16]{};
    ::GetClassNameW(window, className, static_cast<int>(std::size(className)));
    if (std::wstring_view(className) == L"#32770") {
        ::PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
    }
    return TRUE;
}

} // namespace

ModalDriver::ModalDriver(std::vector<DriverStep> steps, DWORD patienceMs)
    : m_steps(std::move(steps)), m_deadline(::GetTickCount64() + patienceMs),
      m_timerWindow(::CreateWindowExW(0, L"STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr))
{
    ::SetWindowSubclass(m_timerWindow, &OnMessage, TimerId, reinterpret_cast<DWORD_PTR>(this));
    ::SetTimer(m_timerWindow, TimerId, PollMs, nullptr);
}

ModalDriver::~ModalDriver()
{
    ::DestroyWindow(m_timerWindow);
    if (!IsFinished() && !m_isForgiven) {
        ADD_FAILURE() << "the script stopped at step " << m_next + 1 << " of " << m_steps.size() << ", \""
                      << m_steps[m_next].name << '"';
    }
}

std::string ModalDriver::Forgive()
{
    m_isForgiven = true;
    return IsFinished() ? std::string() : m_steps[m_next].name;
}

LRESULT CALLBACK ModalDriver::OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR /*id*/,
                                        DWORD_PTR self)
{
    if (message == WM_TIMER && wParam == TimerId) {
        reinterpret_cast<ModalDriver*>(self)->Tick();
        return 0;
    }
    return ::DefSubclassProc(window, message, wParam, lParam);
}

void ModalDriver::Tick()
{
    if (IsFinished()) {
        return;
    }
    if (::GetTickCount64() > m_deadline) {
        m_isTimedOut = true;
        ::EnumThreadWindows(::GetCurrentThreadId(), &CloseDialog, 0);
        return;
    }
    // Ahead first: a step may handle messages itself, and among them the next tick.
    const std::size_t step = m_next++;
    bool isDone = true;
    try {
        isDone = m_steps[step].attempt();
    } catch (const std::exception& error) {
        ADD_FAILURE() << "step \"" << m_steps[step].name << "\" raised: " << error.what();
    }
    if (!isDone) {
        m_next = step;
    }
}

} // namespace sitekeeper
