#pragma once

#include <map>
#include <string>
#include <vector>

#include "environment/ReferenceProperty.hpp"

namespace reference::docparser {

/// One parsed resource document. `T` is `reference::property::RefItemLookup` for a lookup file,
/// `RefItem` for a full reference file. It owns all its strings and refers to nothing outside.
template <typename T>
struct DocResource {
    reference::property::HeaderInfo header;

    /// The items by key, each group in document order: the key is the item's name for
    /// `RefItemLookup`, its href for `RefItem`.
    std::map<std::u16string, std::vector<T>> items;
};

} // namespace reference::docparser
