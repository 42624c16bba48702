#include "discovery/DocResourceMerge.hpp"

#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

namespace reference::docparser {
namespace {

using reference::property::RefItemLookup;
using Lookups = std::vector<RefItemLookup>;

// The lookups of `incoming` whose href neither `held` nor an earlier one of them has.
std::vector<RefItemLookup*> findLackingLookups(const Lookups& held, Lookups& incoming) {
    std::unordered_set<std::u16string_view> hrefs;
    hrefs.reserve(held.size() + incoming.size());
    for (const RefItemLookup& lookup : held)
        hrefs.insert(lookup.getHref());
    std::vector<RefItemLookup*> lacking;
    for (RefItemLookup& lookup : incoming)
        if (hrefs.insert(lookup.getHref()).second)
            lacking.push_back(&lookup);
    return lacking;
}

void completeLookups(Lookups& held, Lookups& incoming) {
    if (held.size() >= incoming.size())
        return;
    const std::vector<RefItemLookup*> lacking = findLackingLookups(held, incoming);
    held.reserve(held.size() + lacking.size());
    for (RefItemLookup* lookup : lacking)
        held.push_back(std::move(*lookup));
}

} // namespace

void mergeDocResource(DocResource<RefItemLookup>& held, DocResource<RefItemLookup>& incoming,
                      bool incomingIsLocalized) {
    if (incomingIsLocalized)
        std::swap(held, incoming);
    held.items.merge(incoming.items);
    for (auto& [name, lookups] : incoming.items)
        completeLookups(held.items.find(name)->second, lookups);
}

} // namespace reference::docparser
