#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "environment/ReferenceProperty.hpp"
#include "refdoc/host/Options.hpp"
#include "refdoc/terminal/Output.hpp"
#include "reference/docparser/DocResource.hpp"
#include "reference/docparser/RefItem.hpp"

namespace refdoc {

/// The documents of a resource by key.
using ResourceDocuments =
    std::map<std::u16string, reference::docparser::DocResource<reference::docparser::RefItem>>;

/// The wanted items of one document, in the order of their hrefs.
struct Selection {
    const std::u16string* key;
    const reference::property::HeaderInfo* header;
    std::vector<const reference::docparser::RefItem*> items;
};

using ItemFilter =
    std::function<bool(const std::u16string& key, const reference::docparser::RefItem& item)>;

/// The documents that have items which `isWanted`, the product's own before those of support
/// packages.
std::vector<Selection> select(const ResourceDocuments& documents, const ItemFilter& isWanted);

/// Whether `name` is one of the item's names, or its href.
bool isCalled(const reference::docparser::RefItem& item, const std::u16string& name);

enum class EntryFormat { Json, Pages, Lists };

/// Shows the items to the user: as JSON in which `resource` stands as it is given, as manual pages,
/// or as lists of names. Nothing selected is shown as JSON only.
///
/// @throws std::system_error when standard output cannot be written.
ExitCode showEntries(const std::vector<Selection>& selections, const std::u16string& resource,
                     EntryFormat format);

/// The files that may hold a resource, one to a further line of a message, with what came of
/// reading them.
Lines triedFiles(const std::u16string& resource,
                 std::string_view outcome = "unreadable, not in the format, or without entries");

/// Whether a file of the reference folder itself can be called by `name`. What a document says must
/// not lead anywhere else.
bool isResourceName(std::u16string_view name);

} // namespace refdoc
