// Text between the system's wide characters and the test report's UTF-8.
#pragma once

#include <string>

namespace sitekeeper::e2e {

[[nodiscard]] std::string ToUtf8(const std::wstring& text);

/// The value of an environment variable; empty when there is none.
[[nodiscard]] std::wstring EnvironmentText(const wchar_t* name);

/// Without regard to case, as the system compares names of files and values.
[[nodiscard]] bool EqualNames(const std::wstring& one, const std::wstring& other);

} // namespace sitekeeper::e2e
