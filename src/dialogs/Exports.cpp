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

// The runtime's, declared in none of its headers.
namespace __gnu_cxx {      // NOLINT(bugprone-reserved-identifier)
void __freeres() noexcept; // NOLINT(bugprone-reserved-identifier)
} // namespace __gnu_cxx

extern "C" BOOL WINAPI DllMain(HINSTANCE /*instance*/, DWORD reason, void* isProcessEnding)
{
    if (reason == DLL_PROCESS_DETACH && isProcessEnding == nullptr) {
        // What the runtime sets aside for raising errors when memory is short, 72 KiB. It belongs to this library's
        // copy of the runtime and would be left behind each time the library is released.
        __gnu_cxx::__freeres();
    }
    return TRUE;
}

extern "C" __declspec(dllexport) sitekeeper::CORSWSplashMsgDlg* NewCORSWSplashMsgDlg()
{
    return new (std::nothrow) sitekeeper::SplashMessageWindow(OwnModule());
}
