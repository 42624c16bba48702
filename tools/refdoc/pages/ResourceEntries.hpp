#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "environment/ReferenceProperty.hpp"
#include "refdoc/host/Options.hpp"
#include "reference/docparser/DocResource.hpp"
#include "reference/docparser/RefItem.hpp"

namespace refdoc {

/// The documents of a resource by key.
using ResourceDocuments =
    std::map<std::u16string, reference::docparser::DocResource<reference::docparser::RefItem>>;

/// The wanted items of one document, sorted by href.
struct Selection {
    const std::u16string* key;
    const reference::property::HeaderInfo* header;
    std::vector<const reference::docparser::RefItem*> items;
};

/// Which items are wanted: all, or with `name` those with that name or href, and those with one of
/// `hrefs`.
struct EntryQuery {
    std::optional<std::u16string> name{};
    std::set<std::u16string> hrefs{};
    std::optional<std::set<std::u16string>> products{}; ///< only documents with one of these keys
};

/// The documents with wanted items, the product's own before those of support packages.
std::vector<Selection> select(const ResourceDocuments& documents, const EntryQuery& query);

enum class EntryFormat { Json, Pages, Lists };

/// Shows the items to the user as JSON with the name of `resource`, as manual pages, or as lists of
/// names. An empty selection is shown as JSON only.
///
/// @throws std::system_error if standard output cannot be written.
ExitCode showEntries(const std::vector<Selection>& selections, const std::u16string& resource,
                     EntryFormat format);

} // namespace refdoc
