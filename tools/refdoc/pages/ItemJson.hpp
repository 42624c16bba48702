#pragma once

#include <boost/json/object.hpp>

#include "environment/ReferenceProperty.hpp"
#include "reference/docparser/RefItem.hpp"

namespace refdoc {

/// All members are always present, even empty ones.
boost::json::object toJson(const reference::property::HeaderInfo& header);
boost::json::object toJson(const reference::docparser::RefItem& item);

} // namespace refdoc
