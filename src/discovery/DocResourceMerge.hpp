#pragma once

#include <cstddef>
#include <map>

#include "discovery/LookupTail.hpp"
#include "environment/ReferenceProperty.hpp"
#include "reference/docparser/DocResource.hpp"

namespace reference::docparser {

/// Merges the documents of one collection that have the same product key. What lists are completed
/// with is kept aside until `finish`, so that a document costs about linear time in its own size,
/// however much is held. Until then held documents stay where they are, and nothing else changes
/// them.
class DocResourceMerge {
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
    using Items = decltype(Document::items);
    using Tails = std::map<Lookups*, LookupTail>; // by the list that they follow

    static std::size_t sizeOfTail(const Tails& tails, Lookups& list) noexcept;

    /// Moves the names that `held` lacks, and for names of both the lists of a localized
    /// `incoming`, in whose place `formerTails` gets the tails. Needs no memory, so that a
    /// localized document takes the place whole. Gives the lists that are longer than those that
    /// have the place now.
    Items mergeNames(Items& held, Items& incoming, bool incomingIsLocalized,
                     Tails& formerTails) noexcept;

    void completeFromFormer(Lookups& list, Lookups& former, Tails& formerTails);

    Tails tails_;
};

} // namespace reference::docparser
