// Who may start the program.
#pragma once

#include <string>

namespace sitekeeper {

enum class Admission
{
    Granted,
    Refused
};

/// The gate's decision on a Windows user name: an empty name is refused, everyone else is let in.
[[nodiscard]] Admission AdmitUser(const std::wstring& userName);

/// What a refused user is told.
[[nodiscard]] std::wstring RefusalText(const std::wstring& userName);

} // namespace sitekeeper
