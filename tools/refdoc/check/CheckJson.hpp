#pragma once

#include <optional>

#include <boost/json/value.hpp>

#include "refdoc/check/CheckFinding.hpp"
#include "refdoc/check/ResourceText.hpp"

namespace refdoc {

/// Parses a text as the library does; tells where and why one is no JSON.
std::optional<boost::json::value> parseText(const ResourceText& text, FindingList& findings);

} // namespace refdoc
