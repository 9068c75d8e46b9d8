// The suite's uninstaller, as its installer registered it.
#pragma once

#include "platform/Registry.h"

#include <string>

namespace sitekeeper {

/// How the uninstaller is started.
struct UninstallCommand
{
    std::wstring program;
    std::wstring parameters;

    bool operator==(const UninstallCommand&) const = default;
};

/// The registered command line: "UninstallString" of the product's uninstall key below HKEY_LOCAL_MACHINE or, where
/// that is missing, unreadable or empty, of the key that the installer names after itself. Empty when neither tells
/// one.
[[nodiscard]] std::wstring ReadUninstallString(const Registry& registry);

/// A registered command line taken apart, without any " -removeonly": the program ends with the first ".exe" that a
/// blank follows, the parameters begin behind that blank. Without one the program is the first three characters and the
/// parameters are the rest, deliberately: what cannot be taken apart starts nothing.
[[nodiscard]] UninstallCommand SplitUninstallString(const std::wstring& command);

} // namespace sitekeeper
