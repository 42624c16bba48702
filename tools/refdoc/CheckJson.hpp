#pragma once

#include <optional>

#include <boost/json/value.hpp>

#include "refdoc/CheckFiles.hpp"
#include "refdoc/CheckFinding.hpp"

namespace refdoc {

/// Parses a text as the library does; tells where and why one is no JSON.
std::optional<boost::json::value> parseText(const ResourceText& text, FindingList& findings);

} // namespace refdoc
