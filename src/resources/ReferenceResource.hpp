#pragma once

#include <map>
#include <string>

#include "environment/ReferenceProperty.hpp"
#include "reference/docparser/DocResource.hpp"
#include "reference/docparser/RefItem.hpp"

namespace reference::docparser {

/// The documents of one resource file by key: the main one by its help folder, those of support
/// packages by their base codes.
template <typename T>
using ParsedResource = std::map<std::u16string, DocResource<T>>;

/// Parses the text of a resource file whose items are of type `T`. The first of several documents
/// with one key stays.
///
/// @throws boost::system::system_error for text that `jsontext::parse` refuses.
/// @throws DocParserException when any of the documents breaks the format.
template <typename T>
ParsedResource<T> parseReferenceResource(const std::string& content);

/// Parses a lookup file.
template <>
ParsedResource<reference::property::RefItemLookup>
parseReferenceResource(const std::string& content);

/// Parses a full reference file.
template <>
ParsedResource<RefItem> parseReferenceResource(const std::string& content);

} // namespace reference::docparser
