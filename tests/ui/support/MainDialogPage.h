// The main dialog as its user sees it.
#pragma once

#include "maindlg/InstallationFolders.h"
#include "platform/Clock.h"
#include "support/DialogPage.h"

#include <windows.h>

#include <string>
#include <vector>

namespace sitekeeper {

/// The three folder fields, by what they show.
inline constexpr int ProgramField = 1000;
inline constexpr int ApplicationField = 1001;
inline constexpr int DatafilesField = 1003;

class MainDialogPage : public DialogPage
{
public:
    using DialogPage::DialogPage;

    [[nodiscard]] InstallationFolders Folders() const;

    /// The hidden schedule.
    [[nodiscard]] CalendarTime ReminderDate() const;
    [[nodiscard]] std::wstring ReminderDays() const { return Text(1027); }

    /// The text of a bitmap button's tooltip, and whether that is switched on for the whole button.
    [[nodiscard]] std::wstring TipOf(int button) const;

    [[nodiscard]] RECT ScreenRectangle() const;

    /// The places of all controls on the screen, in the order of the template.
    [[nodiscard]] std::vector<RECT> ControlRectangles() const;
};

/// The items of a menu, one line each: "<id> <text>", or "> <text>" for a menu in the menu, with " (grayed)" behind it
/// where it is; "-" for a separator.
[[nodiscard]] std::vector<std::wstring> MenuLines(HMENU menu);

} // namespace sitekeeper
