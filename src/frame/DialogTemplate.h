// Dialog templates as bytes: the layouts DLGTEMPLATE (winuser.h) and DLGTEMPLATEEX (published with the dialog box
// documentation). Knows no window, so that any bytes can be tried on it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace sitekeeper {

/// A copy of `dialogTemplate`, plain or extended, with `face` and the size word `size` as its font, whether it had one
/// before or not. Weight, slant and character set of an extended template with a font are kept; one without gets a
/// regular face of the default character set. All else, the controls included, is carried over unchanged.
/// Nothing when the bytes end inside the template's head.
[[nodiscard]] std::optional<std::vector<std::byte>> WithDialogFont(std::span<const std::byte> dialogTemplate,
                                                                   std::wstring_view face, std::uint16_t size);

} // namespace sitekeeper
