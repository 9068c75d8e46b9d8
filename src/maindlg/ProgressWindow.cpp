#include "maindlg/ProgressWindow.h"

#include "res/ResourceIds.h"

namespace sitekeeper {

std::unique_ptr<CORSWSplashMsgDlg> ShowProgressWindow(ModuleId library, HINSTANCE application)
{
    auto* const module = reinterpret_cast<HMODULE>(library);
    const auto make = module == nullptr ? nullptr
                                        : reinterpret_cast<NewCORSWSplashMsgDlgFunction>(reinterpret_cast<void*>(
                                              ::GetProcAddress(module, NewCORSWSplashMsgDlgName)));
    std::unique_ptr<CORSWSplashMsgDlg> window(make != nullptr ? make() : nullptr);
    if (window != nullptr) {
        window->Create(application);
        window->SetTitle(L"Site Keeper");
        window->SetMessage(L"Applying changes...");
        window->SetIcon(IDI_PROGRAM);
    }
    return window;
}

} // namespace sitekeeper
