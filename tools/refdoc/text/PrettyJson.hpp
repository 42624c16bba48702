#pragma once

#include <cstddef>
#include <string>

#include <boost/json/value.hpp>

namespace refdoc {

/// `value` in UTF-8, indented, with a line end. No character stands in it unescaped that is
/// not printable.
std::string prettyJson(const boost::json::value& value);

/// The same within a larger text: without a line end, and with all lines but the first `depth`
/// steps further in.
std::string prettyJson(const boost::json::value& value, std::size_t depth);

/// The same on one line, without a line end.
std::string compactJson(const boost::json::value& value);

} // namespace refdoc
