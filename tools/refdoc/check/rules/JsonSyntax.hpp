#pragma once

#include <optional>
#include <string_view>

#include "refdoc/check/findings/Violations.hpp"
#include "refdoc/format/BoundedTree.hpp"
#include "refdoc/format/Format.hpp"

namespace refdoc {

/// Parses a text as the library does, within the limits of the check. Reports where a text stops
/// being JSON and the likely mistake, and what exceeded the limits.
std::optional<JsonTree> parseText(std::string_view text, const Format& format,
                                  Violations& violations);

} // namespace refdoc
