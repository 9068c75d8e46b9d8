// The folder chooser of all browse commands, on the shell's folder picker.
#pragma once

#include <windows.h>

#include <shlobj.h>

#include <array>
#include <string>

namespace sitekeeper {

/// Runs the shell's folder picker. Owns the picker's parameter block and answers its callback.
/// Invariant: the parameter block changes only while no picker is open.
class CBrowseFolderShell
{
public:
    /// `owner` and `root` may be null. A `titleId` from 1 on names a string of `resources` to use as title;
    /// IsTitleLoaded tells whether it was there. The program itself passes null, null and 0 and sets the title
    /// afterwards.
    explicit CBrowseFolderShell(HWND owner = nullptr, PCIDLIST_ABSOLUTE root = nullptr, UINT titleId = 0,
                                HINSTANCE resources = nullptr);
    CBrowseFolderShell(const CBrowseFolderShell&) = delete;
    CBrowseFolderShell& operator=(const CBrowseFolderShell&) = delete;
    virtual ~CBrowseFolderShell() = default;

    /// The picker opened. The inherited version does nothing.
    virtual void OnInit();

    /// Another item was highlighted. The inherited version does nothing.
    virtual void OnSelChanged(PCIDLIST_ABSOLUTE item);

    /// Set up the picker; silently ignored while it is open. The caller keeps `title` alive until the picker closed.
    void SetOwner(HWND owner);
    void SetRoot(PCIDLIST_ABSOLUTE root);
    void SetTitle(const wchar_t* title);
    void SetFlags(UINT flags);

    /// Shows the picker and waits. False when the user cancelled. True when an item was chosen, also one without a
    /// place in the file system, whose path is then empty.
    bool SelectFolder();

    /// The full path of the chosen folder, at most 259 characters; empty before a choice.
    [[nodiscard]] std::wstring GetSelectedFolder() const { return m_displayName.data(); }

    [[nodiscard]] bool IsTitleLoaded() const noexcept { return m_isTitleLoaded; }
    [[nodiscard]] const BROWSEINFOW& Parameters() const noexcept { return m_parameters; }

protected:
    /// The picker's window while it is open, otherwise null.
    [[nodiscard]] HWND PickerWindow() const noexcept { return m_pickerWindow; }

private:
    static int CALLBACK BrowseCallbackProc(HWND picker, UINT message, LPARAM parameter, LPARAM object) noexcept;

    BROWSEINFOW m_parameters{};
    std::array<wchar_t, MAX_PATH> m_displayName{};
    std::wstring m_selectedFolder;
    std::wstring m_title;
    HWND m_pickerWindow = nullptr;
    bool m_isTitleLoaded = false;
};

/// The picker with a folder selected from the start and the highlighted folder's path as status text.
class CBrowseForFolder : public CBrowseFolderShell
{
public:
    using CBrowseFolderShell::CBrowseFolderShell;

    void OnInit() override;
    void OnSelChanged(PCIDLIST_ABSOLUTE item) override;

    void SetInitialFolder(const std::wstring& path) { m_initialFolder = path; }

private:
    std::wstring m_initialFolder;
};

/// Lets the user choose a folder. `path` is selected at first ("C:\" when it is empty); afterwards it is the chosen
/// folder with a "\" at its end, or empty when the user cancelled or chose something outside the file system.
void BrowseForFolderPath(const std::wstring& title, std::wstring& path);

} // namespace sitekeeper
