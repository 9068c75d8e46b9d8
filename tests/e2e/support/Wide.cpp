#include "e2e/support/Wide.h"

#include <windows.h>

namespace sitekeeper::e2e {

std::string ToUtf8(const std::wstring& text)
{
    const int length = static_cast<int>(text.size());
    const int bytes = ::WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<std::size_t>(bytes), '\0');
    ::WideCharToMultiByte(CP_UTF8, 0, text.data(), length, utf8.data(), bytes, nullptr, nullptr);
    return utf8;
}

std::wstring EnvironmentText(const wchar_t* name)
{
    const DWORD room = ::GetEnvironmentVariableW(name, nullptr, 0);
    std::wstring text(room, L'\0');
    text.resize(::GetEnvironmentVariableW(name, text.data(), room));
    return text;
}

bool EqualNames(const std::wstring& one, const std::wstring& other)
{
    return ::CompareStringOrdinal(one.c_str(), -1, other.c_str(), -1, TRUE) == CSTR_EQUAL;
}

} // namespace sitekeeper::e2e
