#pragma once

#include <boost/json/value.hpp>

#include "environment/ReferenceProperty.hpp"
#include "reference/docparser/DocResource.hpp"

namespace reference::docparser {

/// Parses one document of a lookup file; its items are keyed by name.
DocResource<reference::property::RefItemLookup>
parseLookupDocResource(const boost::json::value& document);

} // namespace reference::docparser
