#pragma once

#include <optional>

#include <boost/json/object.hpp>
#include <boost/json/value.hpp>

#include "environment/ReferenceProperty.hpp"
#include "reference/docparser/RefItem.hpp"

namespace testsupport {

/// What must be read of the JSON text of a resource file with items of type `T`, worked out from
/// tables of the format alone, in the words of `describe`. Nothing when the text breaks the format.
template <typename T>
std::optional<boost::json::object> expectedResource(const boost::json::value& text);

template <>
std::optional<boost::json::object>
expectedResource<reference::property::RefItemLookup>(const boost::json::value& text);
template <>
std::optional<boost::json::object>
expectedResource<reference::docparser::RefItem>(const boost::json::value& text);

} // namespace testsupport
