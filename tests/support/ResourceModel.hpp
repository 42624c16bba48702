#pragma once

#include <optional>

#include <boost/json/object.hpp>
#include <boost/json/value.hpp>

#include "environment/ReferenceProperty.hpp"
#include "reference/docparser/RefItem.hpp"

namespace testsupport {

/// The expected documents of the JSON text of a resource file with items of type `T`, in the form
/// of `describe`, computed from tables of the format alone. Nothing when the text breaks the
/// format.
template <typename T>
std::optional<boost::json::object> expectedResource(const boost::json::value& text);

template <>
std::optional<boost::json::object>
expectedResource<reference::property::RefItemLookup>(const boost::json::value& text);
template <>
std::optional<boost::json::object>
expectedResource<reference::docparser::RefItem>(const boost::json::value& text);

} // namespace testsupport
