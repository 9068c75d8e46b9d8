// Copies of the shipped program with one name inside replaced by another of the same length: the way to a surrounding
// that cannot be had from outside, with every instruction as shipped.
#pragma once

#include <string>

namespace sitekeeper::e2e {

/// Asks a stand-in for the user's name, which takes it from the environment variable SITEKEEPER_E2E_USER.
[[nodiscard]] std::wstring ProgramWithFakeUser();

/// Asks for the common program-files folder under the name SITEKEEPER_E2E_CPF: with and without that variable, and with
/// another place than the registry's. (Wine gives every process the registry's, whatever its parent says.)
[[nodiscard]] std::wstring ProgramWithOwnCommonProgramFiles();

} // namespace sitekeeper::e2e
