#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace refdoc {

/// The few of `known` that `wanted` is most likely a misspelling of, the likeliest first. Letter
/// case counts for nothing.
std::vector<std::u16string> nearNames(std::u16string_view wanted,
                                      const std::set<std::u16string>& known);

/// The same in UTF-8, as a further line of a message; empty when there is none.
std::string similarNames(std::u16string_view wanted, const std::set<std::u16string>& known);

} // namespace refdoc
