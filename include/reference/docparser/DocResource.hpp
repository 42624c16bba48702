#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "environment/ReferenceProperty.hpp"

namespace reference::docparser {

/// One parsed resource document. `T` is `reference::property::RefItemLookup` for a lookup file,
/// `RefItem` for a full reference file. It owns all its strings and refers to nothing outside.
template <typename T>
struct DocResource {
    /// What the document says about its product.
    reference::property::HeaderInfo header;

    /// The items by key, each group in document order: the key is the item's name for
    /// `RefItemLookup`, its href for `RefItem`.
    std::map<std::u16string, std::vector<T>> items;
};

/// The lookup documents of all products by key, a help folder or a support package's base code:
/// first those of installed products and support packages, then all others. Both maps are in the
/// order of UTF-16 code units.
using LookupResources =
    std::pair<std::map<std::u16string, DocResource<reference::property::RefItemLookup>>,
              std::map<std::u16string, DocResource<reference::property::RefItemLookup>>>;

} // namespace reference::docparser
