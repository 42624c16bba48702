#pragma once

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

/// All documents of a resource, sound or not.
std::vector<ResourceDocument> allDocumentsOf(const boost::json::value& resource);

/// The documents that the library takes from a sound resource: the first one of each key.
std::vector<ResourceDocument> documentsOf(const boost::json::value& resource);

/// The items of a document; empty if it has no list of them.
const boost::json::array& itemsOf(const ResourceDocument& document);

/// The pointer to an item of a document.
std::string itemPointer(const ResourceDocument& document, std::size_t item);

/// A member that is a text; empty for anything else.
std::string textMember(const boost::json::value& value, std::string_view name);

} // namespace refdoc
