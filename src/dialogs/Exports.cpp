// The library's entry: what it exports and its own module handle.
#include "dialogs/SplashMessageWindow.h"

#include <windows.h>

#include <new>

namespace {

/// The module that holds this very function.
HINSTANCE OwnModule()
{
    HMODULE module = nullptr;
    ::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                         reinterpret_cast<const wchar_t*>(&OwnModule), &module);
    return module;
}

} // namespace

extern "C" __declspec(dllexport) sitekeeper::CORSWSplashMsgDlg* NewCORSWSplashMsgDlg()
{
    return new (std::nothrow) sitekeeper::SplashMessageWindow(OwnModule());
}
