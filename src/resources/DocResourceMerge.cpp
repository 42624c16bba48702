#include "resources/DocResourceMerge.hpp"

#include <cstddef>
#include <type_traits>

namespace reference::docparser {
namespace {

/// Moves to `held` the items whose keys it lacks, and leaves in `other` those whose keys both have.
/// The cost is that of the smaller map, because what is held may be the sum of many documents.
template <typename Items>
void addMissingItems(Items& held, Items& other) noexcept {
    if (other.size() <= held.size()) {
        held.merge(other);
        return;
    }
    Items inBoth;
    while (!held.empty()) {
        auto item = held.extract(held.begin());
        if (auto same = other.extract(item.key()))
            inBoth.insert(inBoth.end(), std::move(same));
        other.insert(std::move(item));
    }
    held.swap(other);
    other.swap(inBoth);
}

void overlayDocument(DocResource<RefItem>& english, DocResource<RefItem>& localized) noexcept {
    addMissingItems(localized.items, english.items);
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
    addMissingItems(held.items, incoming.items);
    Tails tails = extractTails(incoming.items);
    for (auto& [name, lookups] : incoming.items)
        complete(held.items.find(name)->second, lookups, tails.extract(&lookups));
}

void LookupMerge::finish() {
    for (; !tails_.empty(); tails_.erase(tails_.begin()))
        tails_.begin()->second.moveTo(*tails_.begin()->first);
}

/// Takes them out all at once, so that no tail follows a list that is gone when memory runs out.
LookupMerge::Tails LookupMerge::extractTails(decltype(Document::items)& items) noexcept {
    Tails tails;
    for (auto& [name, lookups] : items)
        tails.insert(tails_.extract(&lookups));
    return tails;
}

// One of the two documents has just been read, so at most one of the two lists has a tail.
void LookupMerge::complete(Lookups& list, Lookups& other, Tails::node_type otherTail) {
    const auto tail = tails_.find(&list);
    const std::size_t size = list.size() + (tail == tails_.end() ? 0 : tail->second.size());
    if (size >= other.size() + (otherTail ? otherTail.mapped().size() : 0))
        return;
    if (!otherTail) {
        tails_.try_emplace(tail, &list, list)->second.append(other);
        return;
    }
    otherTail.mapped().putInFront(other);
    otherTail.mapped().follow(list);
    otherTail.key() = &list;
    tails_.insert(std::move(otherTail));
}

} // namespace reference::docparser
