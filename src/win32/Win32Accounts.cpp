#include "win32/Win32Accounts.h"

#include <windows.h>

#include <array>

namespace sitekeeper {

std::wstring Win32Accounts::UserName() const
{
    std::array<wchar_t, 256> name{};
    auto size = static_cast<DWORD>(name.size());
    // Not asked whether it succeeded: a name that cannot be had stays empty.
    ::GetUserNameW(name.data(), &size);
    name.back() = L'\0';
    return name.data();
}

} // namespace sitekeeper
