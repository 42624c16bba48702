#pragma once

#include <optional>
#include <string>

#include "CollectionRoot.hpp"
#include "reference/docparser/DocResource.hpp"

namespace fuzz {

/// What is collected from a root, worked out from the rules alone, without reading any file; as a
/// text with a line for each document and each lookup. Nothing when the collection must fail.
std::optional<std::string> expectedCollection(const CollectionRoot& root);

/// The same text for what was collected.
std::string describeCollection(const reference::docparser::LookupResources& resources);

} // namespace fuzz
