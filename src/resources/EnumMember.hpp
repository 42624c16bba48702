#pragma once

#include <string>

#include <boost/json/object.hpp>

#include "jsontools/JsonAccess.hpp"

namespace reference::docparser {

/// The value that the text of a member names. An absent member, which is null, an unknown text and
/// a member that is not a string all give the enumeration's default.
template <typename Enumeration>
Enumeration readEnum(const boost::json::value* member) {
    if (!member)
        return Enumeration::getDefaultValue();
    try {
        return Enumeration::stringToEnum(getJsonText(*member));
    } catch (...) {
        return Enumeration::getDefaultValue();
    }
}

/// The same for the member `key` of an object.
template <typename Enumeration>
Enumeration readEnumMember(const boost::json::object& object, const std::string& key) {
    return readEnum<Enumeration>(findMember(object, key));
}

} // namespace reference::docparser
