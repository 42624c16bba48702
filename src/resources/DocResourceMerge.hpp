#pragma once

#include <map>
#include <string>
#include <utility>

#include "environment/ReferenceProperty.hpp"
#include "reference/docparser/DocResource.hpp"
#include "reference/docparser/RefItem.hpp"
#include "resources/LookupTail.hpp"
#include "resources/ReferenceResource.hpp"

/// The two merges of documents that have one product key. In both a localized document takes the
/// place of the English one whole, header and items, and the English one fills in the items whose
/// keys the localized one lacks; this much takes no memory, so no failure leaves a part of it done.
/// They differ in an item key that both documents have: `overlayLocalized`, for full reference
/// files, takes the localized list as it is, and `LookupMerge`, for lookup files, completes it.
namespace reference::docparser {

/// Puts the document of a parsed file into `documents`, or, when its key is there already, gives
/// it and the document held there to `merge`, in the order (held, incoming).
template <typename T, typename Merge>
void insertOrMerge(ParsedResource<T>& documents, typename ParsedResource<T>::node_type document,
                   Merge merge) {
    auto placed = documents.insert(std::move(document));
    if (!placed.inserted)
        merge(placed.position->second, placed.node.mapped());
}

/// Lays the localized full reference file over the English one. A document of both has the
/// localized header and the localized items, and of the English items those whose keys the
/// localized document lacks. What remains in `localized` has no further meaning.
void overlayLocalized(ParsedResource<RefItem>& english,
                      ParsedResource<RefItem>& localized) noexcept;

/// Merges the lookup documents of one collection that have the same product key. What lists are
/// completed with is kept aside until `finish`, so that a document costs about linear time in its
/// own size, however much is held. Until then held documents stay where they are, and nothing else
/// changes them.
class LookupMerge {
public:
    using Document = DocResource<reference::property::RefItemLookup>;

    /// Merges two documents of one product key into `held`.
    ///
    /// A localized `incoming` takes the held place, header included, and the one held so far only
    /// fills in; an English one only fills in. Filling in adds the names that the held document
    /// lacks; for a name of both, and only when the held list is the shorter one, it appends in
    /// order the lookups whose href the held list, with what was appended, lacks. What remains in
    /// `incoming` has no further meaning.
    ///
    /// When memory runs out, `std::bad_alloc` leaves a held document that has all names and, where
    /// a localized one took the place, its header and its lists; only completions are lacking.
    void mergeDocResource(Document& held, Document& incoming, bool incomingIsLocalized);

    /// Completes the lists of all held documents.
    void finish();

private:
    using Tails = std::map<Lookups*, LookupTail>; // by the list that they follow

    Tails extractTails(decltype(Document::items)& items) noexcept;
    void complete(Lookups& list, Lookups& other, Tails::node_type otherTail);

    Tails tails_;
};

} // namespace reference::docparser
