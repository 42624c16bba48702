#pragma once

#include <string>
#include <string_view>

#include <boost/json/object.hpp>
#include <boost/json/string.hpp>

#include "environment/ReferenceProperty.hpp"
#include "reference/docparser/RefItem.hpp"

namespace refdoc {

boost::json::string toJson(const std::u16string& text);
/// Of UTF-8: malformed input becomes U+FFFD.
boost::json::string toJson(std::string_view text);

/// All members are always there, empty ones too.
boost::json::object toJson(const reference::property::HeaderInfo& header);
boost::json::object toJson(const reference::docparser::RefItem& item);

} // namespace refdoc
