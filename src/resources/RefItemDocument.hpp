#pragma once

#include <boost/json/value.hpp>

#include "reference/docparser/DocResource.hpp"
#include "reference/docparser/RefItem.hpp"

namespace reference::docparser {

/// Parses one document of a full reference file; its items are keyed by href.
DocResource<RefItem> parseRefItemDocResource(const boost::json::value& document);

} // namespace reference::docparser
