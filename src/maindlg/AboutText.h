// What the About box says.
#pragma once

#include "platform/Registry.h"
#include "platform/VersionResources.h"

#include <string>

namespace sitekeeper {

/// Description, version and copyright of the program file `programFile` as its version resource has them, and the
/// suite's version and update: "2023" where the resource names no product version, and the update, "ProductUpdate" of
/// the suite key, only where one is installed.
[[nodiscard]] std::wstring BuildAboutText(const VersionResources& resources, const Registry& registry,
                                          const std::wstring& programFile);

} // namespace sitekeeper
