#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/value.hpp>

namespace refdoc {

/// A document of a resource: the product's own, or that of a support package.
struct ResourceDocument {
    const boost::json::value* value;
    std::string pointer;
    std::string key;
};

/// The documents that the library takes from a sound resource: of one key the first.
std::vector<ResourceDocument> documentsOf(const boost::json::value& resource);

/// Calls `take` with each document that a resource has, sound or not.
void forEachDocument(const boost::json::value& resource,
                     const std::function<void(const ResourceDocument&)>& take);

/// The member of an object that is a list; null for anything else.
const boost::json::array* listMember(const boost::json::value& value, std::string_view name);

/// The member of an object that is a text; empty for anything else.
std::string textMember(const boost::json::value& value, std::string_view name);

} // namespace refdoc
