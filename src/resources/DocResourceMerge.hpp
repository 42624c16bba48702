#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <utility>

#include "environment/ReferenceProperty.hpp"
#include "reference/docparser/DocResource.hpp"
#include "reference/docparser/RefItem.hpp"
#include "resources/LookupTail.hpp"
#include "resources/ReferenceResource.hpp"

/// The two merges of documents that have one product key. In both, a localized document replaces
/// the English one whole, header and items, and the English one fills in the items whose keys the
/// localized one lacks. This much takes no memory, so it cannot be left half done. The merges
/// differ where both documents have an item key: `overlayLocalized`, for full reference files,
/// takes the localized list as it is; `LookupMerge`, for lookup files, completes it.
namespace reference::docparser {

/// Puts `document` into `documents`. When its key is there already, calls `merge` with the document
/// that is held there and the incoming one.
template <typename T, typename Merge>
void insertOrMerge(ParsedResource<T>& documents, typename ParsedResource<T>::node_type document,
                   Merge merge) {
    auto placed = documents.insert(std::move(document));
    if (!placed.inserted)
        merge(placed.position->second, placed.node.mapped());
}

/// Lays the localized full reference file over the English one. A document that both have gets the
/// localized header, the localized items, and the English items whose keys the localized document
/// lacks. What remains in `localized` has no further meaning.
void overlayLocalized(ParsedResource<RefItem>& english,
                      ParsedResource<RefItem>& localized) noexcept;

/// Merges the lookup documents of one collection that have the same product key. The lookups that
/// complete a list are kept aside until `finish`, so that a document costs about linear time in its
/// own size, however much is held. Until then held documents must stay where they are, and nothing
/// else may change them.
class LookupMerge {
public:
    using Document = DocResource<reference::property::RefItemLookup>;

    /// Merges two documents of one product key into `held`.
    ///
    /// A localized `incoming` first changes places with `held`. Then `incoming` fills in: it adds
    /// the names that the held document lacks. Where both have a name and the held list is the
    /// shorter one, it appends, in order, the lookups whose href the held list lacks, those that
    /// were appended before included. What remains in `incoming` has no further meaning.
    ///
    /// @throws std::bad_alloc when memory runs out. The held document then has its own header and
    ///         lists whole, and all names; only completions of lists are missing.
    void mergeDocResource(Document& held, Document& incoming, bool incomingIsLocalized);

    /// Completes the lists of all held documents.
    void finish();

private:
    using Items = decltype(Document::items);
    using Tails = std::map<Lookups*, LookupTail>; // by the list that each one follows

    std::size_t completedSize(Lookups& list) const noexcept;
    void complete(Lookups& list, Lookups& longer, Tails::node_type longerTail);

    Tails tails_;
};

} // namespace reference::docparser
