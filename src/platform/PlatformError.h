// The one exception that crosses floors: something the platform, or a stored value, made impossible.
#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <utility>

namespace sitekeeper {

/// A Windows result code (HRESULT): negative means failure. Values from winerror.h.
enum class ResultCode : std::int32_t
{
    Ok = 0,
    /// E_FAIL: an unspecified failure, such as date fields that are out of range.
    Fail = static_cast<std::int32_t>(0x80004005U),
    /// E_INVALIDARG: what was asked for cannot be, such as a time that cannot be converted or a path that is too long.
    InvalidArgument = static_cast<std::int32_t>(0x80070057U),
};

[[nodiscard]] constexpr bool Succeeded(ResultCode code) noexcept
{
    return static_cast<std::int32_t>(code) >= 0;
}

/// Carries the system's code for programs and a sentence for the administrator: which stored value, page or step was
/// bad and where it stands. The sentence is shown as it is by the program's one reporter.
class PlatformError : public std::exception
{
public:
    PlatformError(ResultCode code, std::wstring message) : m_code(code), m_message(std::move(message)) {}

    [[nodiscard]] ResultCode Code() const noexcept { return m_code; }
    [[nodiscard]] const std::wstring& Message() const noexcept { return m_message; }
    [[nodiscard]] const char* what() const noexcept override { return "the platform refused an operation"; }

private:
    ResultCode m_code;
    std::wstring m_message;
};

} // namespace sitekeeper
