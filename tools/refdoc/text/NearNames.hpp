#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "refdoc/text/Text.hpp"

namespace refdoc {

/// The most letters that may be wrong in a similar name, or swapped with the next. In short names
/// fewer may be: any two of them are similar.
inline constexpr std::size_t kMostWrongLetters = 2;

/// The few of `known` that `wanted` most likely misspells, the likeliest first, without regard to
/// case.
std::vector<std::u16string> nearNames(std::u16string_view wanted,
                                      const std::set<std::u16string>& known,
                                      std::size_t mostWrong = kMostWrongLetters);

/// The same in UTF-8, as a further line of a message; empty if there is none.
Lines similarNames(std::u16string_view wanted, const std::set<std::u16string>& known);

} // namespace refdoc
