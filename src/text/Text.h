// Small text rules shared by all floors. Plain functions of their arguments; none of them fails.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace sitekeeper {

/// `character` in lower case by simple folding of the Greek and Cyrillic letters and of the Latin ones up to U+017F
/// and from U+1E00; anything else unchanged.
/// Independent of the locale, so that a user is let in or refused alike on every machine.
[[nodiscard]] wchar_t FoldCase(wchar_t character) noexcept;

/// `text` with FoldCase applied to each character.
[[nodiscard]] std::wstring ToLowerCase(std::wstring_view text);

/// True when both texts have the same length and equal characters after FoldCase.
[[nodiscard]] bool EqualIgnoringCase(std::wstring_view left, std::wstring_view right) noexcept;

/// The decimal number at the start of `text`: leading white space skipped, one sign accepted, digits 0 to 9 read up
/// to the first other character. 0 when there is no digit; a number outside 32 bits is held at the nearest bound.
/// (The rule of the C library's _wtoi.)
[[nodiscard]] int LeadingNumber(std::wstring_view text) noexcept;

/// `pattern` with each "%s" or "%d" replaced by the next of `arguments`, in order, and "%%" by "%". A place without
/// an argument left becomes empty; arguments without a place are dropped; any other "%" stands for itself.
[[nodiscard]] std::wstring Fill(std::wstring_view pattern, std::initializer_list<std::wstring_view> arguments);

/// `text` with every occurrence of `from` replaced by `to`, found from left to right without overlap. An empty
/// `from` is found nowhere.
[[nodiscard]] std::wstring ReplaceAll(std::wstring_view text, std::wstring_view from, std::wstring_view to);

} // namespace sitekeeper
