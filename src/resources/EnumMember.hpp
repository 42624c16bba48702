#pragma once

#include <string>

#include <boost/json/object.hpp>

#include "jsontools/JsonAccess.hpp"

namespace reference::docparser {

/// The value that the text of the member `key` names. An absent member, an unknown text and a
/// member that is no string all give the enumeration's default.
template <typename Enumeration>
Enumeration readEnumMember(const boost::json::object& object, const std::string& key) {
    const boost::json::value* member = findMember(object, key);
    if (!member)
        return Enumeration::getDefaultValue();
    try {
        return Enumeration::stringToEnum(getJsonText(*member));
    } catch (...) {
        return Enumeration::getDefaultValue();
    }
}

} // namespace reference::docparser
