// Stands in for ADVAPI32.dll in a copy of the program whose import table names this file instead: the user's name is
// what SITEKEEPER_E2E_USER says, everything else goes on to the system.
#include <windows.h>

extern "C" BOOL WINAPI FakeUserName(wchar_t* name, DWORD* size)
{
    const DWORD length = ::GetEnvironmentVariableW(L"SITEKEEPER_E2E_USER", name, *size);
    if (length == 0 || length >= *size) {
        return FALSE; // and, as the system does it, nothing in the buffer
    }
    *size = length + 1;
    return TRUE;
}
