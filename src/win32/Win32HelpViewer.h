// The HTML Help control, found and loaded at its first use.
#pragma once

#include "platform/HelpViewer.h"
#include "win32/Handles.h"

#include <windows.h>

namespace sitekeeper {

class Win32HelpViewer final : public HelpViewer
{
public:
    void ShowContents(WindowId owner, const std::wstring& path) override;
    void ShowTopic(WindowId owner, const std::wstring& address) override;

private:
    using HtmlHelpFunction = HWND(WINAPI*)(HWND, const wchar_t*, UINT, DWORD_PTR);

    void Show(WindowId owner, const std::wstring& address, UINT command);

    /// The control's entry point; null when it cannot be had, which is remembered and not tried again.
    HtmlHelpFunction EntryPoint();

    bool m_isTried = false;
    UniqueModule m_control;
    HtmlHelpFunction m_entryPoint = nullptr;
};

} // namespace sitekeeper
