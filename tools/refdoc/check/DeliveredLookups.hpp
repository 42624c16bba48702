#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <unordered_set>

#include <boost/json/object.hpp>

#include "environment/ReferenceProperty.hpp"

namespace refdoc {

/// What the library gives of the lookup files to readers of one language, as far as checks ask. It
/// keeps a few bytes for each lookup.
class DeliveredLookups {
public:
    /// Reads the lookup files of the root and in the language in force.
    DeliveredLookups();

    /// Whether the document of the key has exactly this lookup.
    bool has(const std::u16string& key, const reference::property::RefItemLookup& lookup) const;
    /// Whether it has one of this name and href.
    bool hasLink(const std::u16string& key, const reference::property::RefItemLookup& lookup) const;
    /// The header of the document of the key; null when there is no such document.
    const reference::property::HeaderInfo* header(const std::u16string& key) const;

private:
    std::unordered_set<std::size_t> lookups_;
    std::unordered_set<std::size_t> links_;
    std::map<std::u16string, reference::property::HeaderInfo> headers_;
};

/// An item of a sound lookup file as the library reads it.
reference::property::RefItemLookup lookupOf(const boost::json::object& item);

bool equals(const reference::property::HeaderInfo& left,
            const reference::property::HeaderInfo& right);

} // namespace refdoc
