// Which AutoCAD products of this machine the program may touch, and where each keeps its trusted paths.
#pragma once

#include "platform/Registry.h"

#include <string>
#include <vector>

namespace sitekeeper {

/// Empties `names` and fills it with the names of the sub-keys of `key` below HKEY_LOCAL_MACHINE, in the registry's
/// order. A name that cannot be read is left out and the walk goes on.
/// The status of the opening when that fails, otherwise that of the last step.
RegistryStatus EnumRegistrySubKeys(const Registry& registry, const std::wstring& key, std::vector<std::wstring>& names);

/// Empties both lists and fills them with the AutoCAD products of the releases R20 to R24 as the registry has them now,
/// in its order: into `keys` the key below HKEY_LOCAL_MACHINE whose unnamed value holds the product's trusted paths,
/// into `releases`, at the same place, the first three characters of its release ("R24"). Left out are products without
/// that value, with one that is longer than TextValueLimit bytes or reads "DEFAULT", and all that cannot be read. An
/// empty value counts. Nothing is reported. Without memory for all of them both lists are empty.
void FindAutoCADTrustedPathKeys(const Registry& registry, std::vector<std::wstring>& keys,
                                std::vector<std::wstring>& releases);

} // namespace sitekeeper
