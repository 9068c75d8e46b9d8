// The order in which a store's entries are written.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace sitekeeper {

/// The numbers of the entries in ascending order of their section and, within one section, of their key. Texts are
/// compared by character code; entries that are equal in both keep their order. Takes n log n comparisons of a few
/// characters and one look at each text.
/// `sections` and `keys` are of one length, and sections of the same name are the same view.
[[nodiscard]] std::vector<std::uint32_t> AscendingOrder(const std::vector<std::wstring_view>& sections,
                                                        const std::vector<std::wstring_view>& keys);

} // namespace sitekeeper
