// The contract between the program and the maker's dialogs library, included by both sides: a small message window
// shown while work is under way. The order of the operations is the interface; a library of another build is used
// through it too, so nothing may be inserted or moved.
#pragma once

#include <windows.h>

namespace sitekeeper {

/// No operation raises an error: each side has a runtime of its own.
class CORSWSplashMsgDlg
{
public:
    CORSWSplashMsgDlg() = default;
    CORSWSplashMsgDlg(const CORSWSplashMsgDlg&) = delete;
    CORSWSplashMsgDlg& operator=(const CORSWSplashMsgDlg&) = delete;

    /// Deleting the object removes its window.
    virtual ~CORSWSplashMsgDlg() = default;

    /// Called first: makes the message window, above the window that is active at that moment. `application` holds the
    /// resources that SetIcon names. Zero when the window cannot be made; the other operations then do nothing.
    virtual int Create(HINSTANCE application) = 0;

    /// What the window shows. Each change is painted before the call returns, since the caller goes on working without
    /// handling messages. A text for which there is no memory leaves the one before it.
    virtual void SetTitle(const wchar_t* title) = 0;
    virtual void SetMessage(const wchar_t* message) = 0;
    virtual void SetIcon(UINT iconId) = 0;
};

/// The library's one export: makes such an object, without its window; null when it cannot. The caller deletes it.
using NewCORSWSplashMsgDlgFunction = CORSWSplashMsgDlg* (*)();
inline constexpr const char* NewCORSWSplashMsgDlgName = "NewCORSWSplashMsgDlg";

} // namespace sitekeeper
