#include "discovery/DocResourceMerge.hpp"

#include <cstddef>
#include <utility>

namespace reference::docparser {

// Only the incoming document's names are moved: what is held may be the sum of many documents.
void DocResourceMerge::mergeDocResource(Document& held, Document& incoming,
                                        bool incomingIsLocalized) {
    if (incomingIsLocalized)
        std::swap(held.header, incoming.header);
    Tails formerTails;
    Items longer = mergeNames(held.items, incoming.items, incomingIsLocalized, formerTails);
    for (auto& [name, lookups] : longer) {
        Lookups& list = held.items.find(name)->second;
        if (incomingIsLocalized)
            completeFromFormer(list, lookups, formerTails);
        else
            tails_.try_emplace(&list, list).first->second.append(lookups);
    }
}

void DocResourceMerge::finish() {
    for (; !tails_.empty(); tails_.erase(tails_.begin()))
        tails_.begin()->second.moveTo(*tails_.begin()->first);
}

std::size_t DocResourceMerge::sizeOfTail(const Tails& tails, Lookups& list) noexcept {
    const auto tail = tails.find(&list);
    return tail == tails.end() ? 0 : tail->second.size();
}

DocResourceMerge::Items DocResourceMerge::mergeNames(Items& held, Items& incoming,
                                                     bool incomingIsLocalized,
                                                     Tails& formerTails) noexcept {
    Items longer;
    while (!incoming.empty()) {
        auto moved = held.insert(incoming.extract(incoming.begin()));
        if (moved.inserted)
            continue;
        Lookups& list = moved.position->second;
        Lookups& other = moved.node.mapped();
        if (incomingIsLocalized) {
            list.swap(other);
            formerTails.insert(tails_.extract(&list));
        }
        if (list.size() + sizeOfTail(tails_, list) < other.size() + sizeOfTail(formerTails, list))
            longer.insert(longer.end(), std::move(moved.node));
    }
    return longer;
}

void DocResourceMerge::completeFromFormer(Lookups& list, Lookups& former, Tails& formerTails) {
    LookupTail& tail = formerTails[&list];
    tail.putInFront(former);
    tail.follow(list);
    tails_.insert(formerTails.extract(&list));
}

} // namespace reference::docparser
