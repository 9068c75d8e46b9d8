// An application for tests of dialogs: errors are remembered, not shown.
#pragma once

#include "frame/WinApp.h"

#include <windows.h>

#include <exception>
#include <string>
#include <vector>

namespace sitekeeper {

class TestApp : public CWinApp
{
public:
    TestApp() : CWinApp(::GetModuleHandleW(nullptr)) {}

    void ReportError(const std::exception_ptr& error) override
    {
        try {
            std::rethrow_exception(error);
        } catch (const std::exception& known) {
            m_errors.emplace_back(known.what());
        } catch (...) {
            m_errors.emplace_back("an error of an unknown kind");
        }
    }

    /// What each reported error says, in the order they came.
    [[nodiscard]] const std::vector<std::string>& Errors() const { return m_errors; }

private:
    std::vector<std::string> m_errors;
};

} // namespace sitekeeper
