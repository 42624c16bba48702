#include "resources/LookupTail.hpp"

#include <algorithm>
#include <iterator>
#include <utility>

namespace reference::docparser {

using reference::property::RefItemLookup;

void LookupTail::append(Lookups& lookups) {
    for (RefItemLookup& lookup : lookups)
        if (!listHrefs_.contains(lookup.getHref()))
            insert(lookups_.end(), lookup);
}

void LookupTail::putInFront(Lookups& list) {
    const auto front = lookups_.begin();
    for (RefItemLookup& lookup : list)
        insert(front, lookup);
}

void LookupTail::follow(const Lookups& list) {
    listHrefs_.clear();
    for (const RefItemLookup& lookup : list) {
        listHrefs_.insert(lookup.getHref());
        const auto place = places_.find(lookup.getHref());
        if (place == places_.end())
            continue;
        lookups_.erase(place->second);
        places_.erase(place);
    }
}

void LookupTail::moveTo(Lookups& list) {
    list.reserve(list.size() + lookups_.size());
    std::move(lookups_.begin(), lookups_.end(), std::back_inserter(list));
}

// When memory runs out, the tail stays as it was.
void LookupTail::insert(Sequence::iterator place, RefItemLookup& lookup) {
    Sequence one;
    one.push_back(std::move(lookup));
    if (places_.try_emplace(one.front().getHref(), one.begin()).second)
        lookups_.splice(place, one);
}

} // namespace reference::docparser
