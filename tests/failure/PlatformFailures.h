// The program's operations with each of their calls of the platform failing in turn, subject by subject.
#pragma once

#include "FailureTable.h"

namespace sitekeeper {

[[nodiscard]] SweptOperations SettingsOperations();
[[nodiscard]] SweptOperations StartOperations();
[[nodiscard]] SweptOperations ApplyOperations();
[[nodiscard]] SweptOperations CommandOperations();
[[nodiscard]] SweptOperations PrintOperations();
[[nodiscard]] SweptOperations UpdateOperations();
[[nodiscard]] SweptOperations ShortcutOperations();
[[nodiscard]] SweptOperations AccessListOperations();
[[nodiscard]] SweptOperations SafeSaveOperations();
[[nodiscard]] SweptOperations AutoCADOperations();

} // namespace sitekeeper
