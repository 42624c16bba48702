#pragma once

#include <optional>

#include <boost/json/array.hpp>

#include "CollectionRoot.hpp"

namespace fuzz {

/// What is collected from a root, worked out from the rules alone, without reading any file: the
/// documents of what is installed, and all others. Nothing when the collection must fail.
std::optional<boost::json::array> expectedCollection(const CollectionRoot& root);

} // namespace fuzz
