#pragma once

#include <optional>

#include <boost/json/array.hpp>

#include "CollectionRoot.hpp"

namespace fuzz {

/// The collection of a root, computed from the rules alone, without reading any file: the documents
/// of installed products, and all others. Nothing when the collection must fail.
std::optional<boost::json::array> expectedCollection(const CollectionRoot& root);

} // namespace fuzz
