// The peer of the start-up benchmark: a program that does nothing but show the same dialog template.
#include "res/ResourceIds.h"

#include <windows.h>

#include <commctrl.h>

namespace {

INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM /*lParam*/)
{
    if (message == WM_COMMAND && (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL)) {
        ::EndDialog(dialog, LOWORD(wParam));
        return TRUE;
    }
    return message == WM_INITDIALOG ? TRUE : FALSE;
}

} // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE /*previous*/, wchar_t* /*commandLine*/, int /*showCommand*/)
{
    INITCOMMONCONTROLSEX controls{};
    controls.dwSize = sizeof controls;
    controls.dwICC = ICC_WIN95_CLASSES | ICC_DATE_CLASSES;
    ::InitCommonControlsEx(&controls);
    ::DialogBoxParamW(instance, MAKEINTRESOURCEW(IDD_MAIN), nullptr, &Procedure, 0);
    return 0;
}
