#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "refdoc/text/Text.hpp"

namespace refdoc {

/// So many letters may be wrong, or two in the place of each other, and fewer in short names: any
/// two of them are alike.
inline constexpr std::size_t kMostWrongLetters = 2;

/// The few of `known` that `wanted` is most likely a misspelling of, the likeliest first. Letter
/// case counts for nothing.
std::vector<std::u16string> nearNames(std::u16string_view wanted,
                                      const std::set<std::u16string>& known,
                                      std::size_t mostWrong = kMostWrongLetters);

/// The same in UTF-8, as a further line of a message; nothing when there is none.
Lines similarNames(std::u16string_view wanted, const std::set<std::u16string>& known);

} // namespace refdoc
