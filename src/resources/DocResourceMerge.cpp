#include "resources/DocResourceMerge.hpp"

#include <cstddef>
#include <type_traits>

namespace reference::docparser {
namespace {

/// Moves to `held` the items whose keys it lacks, which leaves `other` without meaning. For each
/// key of both, calls `inBoth` with the list that `held` keeps and with the other item. The cost
/// depends on the smaller map only: what is held may be the sum of many documents.
template <typename Items, typename InBoth>
void addMissingItems(Items& held, Items& other, InBoth inBoth) noexcept {
    if (other.size() <= held.size()) {
        while (!other.empty()) {
            auto placed = held.insert(other.extract(other.begin()));
            if (!placed.inserted)
                inBoth(placed.position->second, std::move(placed.node));
        }
        return;
    }
    while (!held.empty()) {
        auto item = held.extract(held.begin());
        typename Items::node_type same;
        auto place = other.lower_bound(item.key());
        if (place != other.end() && place->first == item.key())
            same = other.extract(place++);
        place = other.insert(place, std::move(item));
        if (same)
            inBoth(place->second, std::move(same));
    }
    held.swap(other);
}

void overlayDocument(DocResource<RefItem>& english, DocResource<RefItem>& localized) noexcept {
    addMissingItems(localized.items, english.items, [](const auto&, const auto&) {});
    english.header = std::move(localized.header);
    english.items = std::move(localized.items);
}

} // namespace

void overlayLocalized(ParsedResource<RefItem>& english,
                      ParsedResource<RefItem>& localized) noexcept {
    while (!localized.empty())
        insertOrMerge(english, localized.extract(localized.begin()), overlayDocument);
}

void LookupMerge::mergeDocResource(Document& held, Document& incoming, bool incomingIsLocalized) {
    static_assert(std::is_nothrow_swappable_v<Document>);
    if (incomingIsLocalized)
        std::swap(held, incoming);
    Items longer;
    Tails tails;
    addMissingItems(held.items, incoming.items, [&](Lookups& list, Items::node_type other) {
        auto tail = tails_.extract(&other.mapped());
        if (completedSize(list) >= other.mapped().size() + (tail ? tail.mapped().size() : 0))
            return;
        tails.insert(std::move(tail));
        longer.insert(longer.end(), std::move(other));
    });
    for (auto& [name, lookups] : longer)
        complete(held.items.find(name)->second, lookups, tails.extract(&lookups));
}

void LookupMerge::finish() {
    for (; !tails_.empty(); tails_.erase(tails_.begin()))
        tails_.begin()->second.moveTo(*tails_.begin()->first);
}

std::size_t LookupMerge::completedSize(Lookups& list) const noexcept {
    const auto tail = tails_.find(&list);
    return list.size() + (tail == tails_.end() ? 0 : tail->second.size());
}

// One of the two documents has just been read, so at most one of the two lists has a tail.
void LookupMerge::complete(Lookups& list, Lookups& longer, Tails::node_type longerTail) {
    if (!longerTail) {
        tails_.try_emplace(&list, list).first->second.append(longer);
        return;
    }
    longerTail.mapped().putInFront(longer);
    longerTail.mapped().follow(list);
    longerTail.key() = &list;
    tails_.insert(std::move(longerTail));
}

} // namespace reference::docparser
