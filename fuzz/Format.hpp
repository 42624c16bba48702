#pragma once

#include <boost/json/value.hpp>

/// The formats of resource files as tables, to tell which JSON texts must be taken.
namespace fuzz {

bool isLookupResource(const boost::json::value& text);
bool isReferenceResource(const boost::json::value& text);

} // namespace fuzz
