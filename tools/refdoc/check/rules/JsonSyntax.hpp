#pragma once

#include <optional>
#include <string_view>

#include "refdoc/check/findings/Violations.hpp"
#include "refdoc/format/BoundedTree.hpp"
#include "refdoc/format/Format.hpp"

namespace refdoc {

/// Parses a text as the library does, as far as checks look. Reports where a text stops being JSON
/// and what mistake that usually is, and what was too much to look at.
std::optional<JsonTree> parseText(std::string_view text, const Format& format,
                                  Violations& violations);

} // namespace refdoc
