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

struct LookupQuery {
    std::optional<NamePattern> pattern{};
    std::optional<reference::property::RefEntityType> type{};
    std::optional<std::u16string> product{};
};

/// Finds records of installed products, of the others, or of both, sorted by how well their names
/// match, then by name, then by product.
enum class Installed { Only, Not, Either };
std::vector<LookupRecord> findRecords(const reference::docparser::LookupResources& documents,
                                      const LookupQuery& query, Installed installed);

/// The number of records of all products, installed or not.
std::size_t countRecords(const reference::docparser::LookupResources& documents);

/// Names similar to `wanted` among the records that match `query` apart from its pattern, as a
/// further line of a message; empty if there are none.
Lines similarNames(std::u16string_view wanted,
                   const reference::docparser::LookupResources& documents, LookupQuery query,
                   Installed installed);

} // namespace refdoc
