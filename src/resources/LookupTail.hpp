#pragma once

#include <cstddef>
#include <list>
#include <map>
#include <set>
#include <string_view>
#include <vector>

#include "environment/ReferenceProperty.hpp"

namespace reference::docparser {

/// The lookups of one name, in order.
using Lookups = std::vector<reference::property::RefItemLookup>;

/// The lookups that complete a list: they come behind it, with each href once and none that the
/// list has. The list itself must stay in its place, unchanged, as long as a tail follows it.
///
/// Each function costs about linear time in its argument, however long the tail is. When memory
/// runs out in `append`, what was appended so far stays; in any other function, the tail is of no
/// further use.
class LookupTail {
public:
    explicit LookupTail(const Lookups& list) { follow(list); }

    std::size_t size() const noexcept { return lookups_.size(); }

    /// Appends in order the lookups whose href neither the list nor the tail has.
    void append(Lookups& lookups);

    /// Makes `list`, the one that was followed so far, the beginning of the tail.
    void putInFront(Lookups& list);

    /// Follows `list` from now on, and drops the lookups whose href `list` has.
    void follow(const Lookups& list);

    /// Appends the tail to its list, as its last use.
    void moveTo(Lookups& list);

private:
    using Sequence = std::list<reference::property::RefItemLookup>;

    void insert(Sequence::iterator place, reference::property::RefItemLookup& lookup);

    Sequence lookups_;
    std::map<std::u16string_view, Sequence::iterator> places_; // of `lookups_`, by href
    std::set<std::u16string_view> listHrefs_;
};

} // namespace reference::docparser
