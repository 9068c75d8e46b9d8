// The suite's design folders among the trusted paths of AutoCAD.
#pragma once

#include "platform/Registry.h"

#include <string>
#include <vector>

namespace sitekeeper {

/// The suite's designer folder: "Application Path" of the suite's "Installation" key, and "\Designer" behind it. Just
/// "\Designer" when the value cannot be read.
[[nodiscard]] std::wstring ReadDesignerFolder(const Registry& registry);

/// Adds the five design folders of the suite to the trusted paths in each of `keys`, keys below HKEY_LOCAL_MACHINE,
/// with the release that stands at the same place of `releases`. A product whose paths hold the first of the folders,
/// in any case of letters, is left untouched. Paths that cannot be read, or are longer than 2048 bytes, count as none:
/// the five then stand alone. Whether a write succeeds is not looked at.
///
/// The place in the text at which the search for the first folder begins is 0 for the first product and carried over
/// from product to product, deliberately: behind a product that was left untouched the search begins at the character
/// at which it stopped there; behind one that was written it cannot begin. Raises PlatformError (InvalidArgument),
/// naming the product, when the search cannot begin or a release is missing. The products before are then done, that
/// one and those behind it untouched.
void ExtendTrustedPaths(Registry& registry, const std::wstring& designerFolder, const std::vector<std::wstring>& keys,
                        const std::vector<std::wstring>& releases);

/// Looks for the AutoCAD products of this machine, which refills both lists as FindAutoCADTrustedPathKeys does, and
/// extends the trusted paths of all of them; raises what ExtendTrustedPaths does.
void AddTrustedPaths(Registry& registry, std::vector<std::wstring>& keys, std::vector<std::wstring>& releases);

} // namespace sitekeeper
