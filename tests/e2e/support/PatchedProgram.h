// Copies of the shipped program with one name inside replaced by another of the same length: the way to a surrounding
// that cannot be had from outside, with every instruction as shipped.
#pragma once

#include <string>

namespace sitekeeper::e2e {

/// A copy that asks a stand-in for its user's name, and the name that it is told as long as this object lives.
class NamedUser
{
public:
    explicit NamedUser(const std::wstring& name);
    NamedUser(const NamedUser&) = delete;
    NamedUser& operator=(const NamedUser&) = delete;
    ~NamedUser();

    [[nodiscard]] const std::wstring& Program() const noexcept { return m_program; }

    /// Another name for the starts from now on.
    static void Rename(const std::wstring& name);

private:
    std::wstring m_program;
};

/// Asks for the common program-files folder under the name SITEKEEPER_E2E_CPF: with and without that variable, and with
/// another place than the registry's. (Wine gives every process the registry's, whatever its parent says.)
[[nodiscard]] std::wstring ProgramWithOwnCommonProgramFiles();

} // namespace sitekeeper::e2e
