// The parsers, the store and what is built on them, with each of their allocations failing in turn.
#pragma once

#include "FailureTable.h"

namespace sitekeeper {

[[nodiscard]] SweptOperations StoreAllocations();
[[nodiscard]] SweptOperations StorePartAllocations();
[[nodiscard]] SweptOperations AccessListAllocations();
[[nodiscard]] SweptOperations ParserAllocations();
[[nodiscard]] SweptOperations CommandAllocations();

} // namespace sitekeeper
