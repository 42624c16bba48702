#include "discovery/DocResourceMerge.hpp"

#include <set>
#include <string_view>
#include <utility>
#include <vector>

namespace reference::docparser {
namespace {

using reference::property::RefItemLookup;
using Lookups = std::vector<RefItemLookup>;

// The lookups of `incoming` whose href neither `held` nor an earlier one of them has.
std::vector<RefItemLookup*> findMissingLookups(const Lookups& held, Lookups& incoming) {
    std::set<std::u16string_view> hrefs;
    for (const RefItemLookup& lookup : held)
        hrefs.insert(lookup.getHref());
    std::vector<RefItemLookup*> missing;
    for (RefItemLookup& lookup : incoming)
        if (hrefs.insert(lookup.getHref()).second)
            missing.push_back(&lookup);
    return missing;
}

void completeLookups(Lookups& held, Lookups& incoming) {
    if (held.size() >= incoming.size())
        return;
    const std::vector<RefItemLookup*> missing = findMissingLookups(held, incoming);
    held.reserve(held.size() + missing.size());
    for (RefItemLookup* lookup : missing)
        held.push_back(std::move(*lookup));
}

} // namespace

// Only the incoming document's names are moved: what is held may be the sum of many documents.
void mergeDocResource(DocResource<RefItemLookup>& held, DocResource<RefItemLookup>& incoming,
                      bool incomingIsLocalized) {
    if (incomingIsLocalized)
        std::swap(held.header, incoming.header);
    while (!incoming.items.empty()) {
        auto moved = held.items.insert(incoming.items.extract(incoming.items.begin()));
        if (moved.inserted)
            continue;
        Lookups& heldLookups = moved.position->second;
        Lookups& incomingLookups = moved.node.mapped();
        if (incomingIsLocalized)
            heldLookups.swap(incomingLookups);
        completeLookups(heldLookups, incomingLookups);
    }
}

} // namespace reference::docparser
