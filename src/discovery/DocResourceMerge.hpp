#pragma once

#include "environment/ReferenceProperty.hpp"
#include "reference/docparser/DocResource.hpp"

namespace reference::docparser {

/// Merges two documents of one product key into `held`.
///
/// A localized `incoming` takes the held place, header included, and the one held so far only
/// fills in; an English one only fills in. Filling in adds the names that the held document lacks;
/// for a name of both, and only when the held list is the shorter one, it appends in order the
/// lookups whose href the held list, with what was appended, lacks. What remains in `incoming`
/// has no further meaning.
///
/// Costs about linear time in `incoming` and in the lists of the names of both, also for a name
/// with very many lookups; the other names of `held` cost nothing.
void mergeDocResource(DocResource<reference::property::RefItemLookup>& held,
                      DocResource<reference::property::RefItemLookup>& incoming,
                      bool incomingIsLocalized);

} // namespace reference::docparser
