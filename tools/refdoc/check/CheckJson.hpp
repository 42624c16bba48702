#pragma once

#include <optional>

#include "refdoc/check/CheckFinding.hpp"
#include "refdoc/check/ResourceText.hpp"
#include "refdoc/format/BoundedTree.hpp"

namespace refdoc {

/// Parses a text as the library does, as far as checks look; tells where and why one is no JSON,
/// and what was too much to look at.
std::optional<JsonTree> parseText(const ResourceText& text, FindingList& findings);

} // namespace refdoc
