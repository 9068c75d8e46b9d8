// The user access dialog on a platform in memory: opened, worked by gestures, and gone again.
#pragma once

#include "access/AccessLists.h"
#include "access/UserAccessDlg.h"
#include "support/MemoryPlatform.h"
#include "support/ModalDriver.h"
#include "support/TestApp.h"
#include "support/UserAccessPage.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace sitekeeper {

class UserAccessTest : public testing::Test
{
protected:
    using Gesture = std::function<void(const UserAccessPage&)>;
    using Question = std::function<bool(const UserAccessPage&)>;

    UserAccessTest();

    /// Opens the dialog, runs the steps in it, destroys it. What DoModal gave.
    INT_PTR Run(std::vector<DriverStep> steps);
    INT_PTR RunOwnedBy(const CWnd& owner, std::vector<DriverStep> steps);

    DriverStep Do(std::string name, Gesture gesture);
    DriverStep Await(std::string name, Question question);
    DriverStep Press(int button);

    /// The steps of a drag with the left button: press on a name, move to a place, release.
    std::vector<DriverStep> Drag(int list, const std::wstring& name,
                                 const std::function<POINT(const UserAccessPage&)>& to);
    std::vector<DriverStep> DragOnto(int list, const std::wstring& name, int target);

    /// Looks at what all five lists show, in the order of the dialog.
    DriverStep Expect(std::vector<Names> lists);

    void Store(const std::string& content) { memory.files.AddFile(FilePath, content); }
    [[nodiscard]] std::string Stored() const { return memory.files.ContentOf(FilePath).value_or("(no file)"); }

    static constexpr const wchar_t* FilePath = L"N:\\Suite\\Data\\UserDatafile.ini";

    MemoryPlatform memory;
    Platform m_platform = memory.Ports();
    InstallationSettings m_settings = SettingsOn(m_platform);
    AccessLists m_lists{m_platform, m_settings, L"C:\\Suite\\SiteKeeper64.exe"};
    TestApp m_app;
    CUserAccessDlg* m_dialog = nullptr;
    /// How long a script may take.
    DWORD m_patienceMs = ModalDriver::PatienceMs;
};

/// Puts the steps of several scripts one after the other.
[[nodiscard]] std::vector<DriverStep> Joined(std::vector<std::vector<DriverStep>> scripts);

} // namespace sitekeeper
