#include "win32/Win32Modules.h"

#include <windows.h>

namespace sitekeeper {

ModuleId Win32Modules::Load(const std::wstring& path)
{
    // Without this the loader would put up boxes of its own for a file that is no library.
    DWORD formerMode = 0;
    ::SetThreadErrorMode(SEM_FAILCRITICALERRORS, &formerMode);
    const HMODULE library = ::LoadLibraryW(path.c_str());
    ::SetThreadErrorMode(formerMode, nullptr);
    return static_cast<ModuleId>(reinterpret_cast<std::uintptr_t>(library));
}

void Win32Modules::Release(ModuleId library) noexcept
{
    if (library != ModuleId::None) {
        ::FreeLibrary(reinterpret_cast<HMODULE>(library));
    }
}

} // namespace sitekeeper
