#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "environment/ReferenceProperty.hpp"
#include "refdoc/text/NamePattern.hpp"
#include "refdoc/text/Text.hpp"
#include "reference/docparser/DocResource.hpp"

namespace refdoc {

/// The lookup documents of the installed products, or of the others, by key.
using LookupDocuments = reference::docparser::LookupResources::first_type;

/// A record of a lookup document. It points into the documents that it was found in.
struct LookupRecord {
    const std::u16string* product; ///< the document's key
    const reference::property::HeaderInfo* header;
    const reference::property::RefItemLookup* item;
    bool installed;
};

/// Which records are wanted.
struct LookupQuery {
    std::optional<NamePattern> pattern{};
    std::optional<reference::property::RefEntityType> type{};
    std::optional<std::u16string> product{};
};

/// The wanted records of installed products, of the others, or of both: by how well their names
/// fit, then by name, then by product.
enum class Installed { Only, Not, Either };
std::vector<LookupRecord> findRecords(const reference::docparser::LookupResources& documents,
                                      const LookupQuery& query, Installed installed);

/// How many records there are in all, installed or not.
std::size_t countRecords(const reference::docparser::LookupResources& documents);

/// Names like `wanted` in the records that `query` wants but for its pattern, as a further line of
/// a message; nothing when there is none.
Lines similarNames(std::u16string_view wanted,
                   const reference::docparser::LookupResources& documents, LookupQuery query,
                   Installed installed);

} // namespace refdoc
