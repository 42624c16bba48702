#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "refdoc/catalog/LookupIndex.hpp"

namespace refdoc {

/// A lookup that some readers do not get because of others of the same key and name.
struct LookupFate {
    std::uint32_t text;
    std::uint32_t key;
    std::uint32_t item;
    bool isLost = false;     ///< the readers of its text do not get this very lookup
    bool isLinkLost = false; ///< nor any other with its href
    /// For a text meant for everybody: one bit for each language whose readers get no lookup with
    /// its href.
    std::uint64_t linkLostFor = 0;
};

/// The fates of all lookups of a root that some of their readers do not get.
class LookupFates {
public:
    /// @param index must be finished.
    explicit LookupFates(const LookupIndex& index);

    /// Null for a lookup that all readers of its text get.
    const LookupFate* find(std::uint32_t text, std::uint32_t key, std::uint32_t item) const;

    /// The languages whose readers get no lookup with its href, though its text is meant for
    /// everybody.
    std::vector<std::string> readersWithoutLink(const LookupFate& fate) const;

private:
    void addGroup(const LookupIndex& index, LookupIndex::Group group, NumberSet& hrefs);
    std::uint64_t bitOf(const std::string& readers) const;

    /// The languages other than English that have texts, sorted; the first 64.
    std::vector<std::string> languages_;
    std::vector<LookupFate> fates_; ///< sorted
};

} // namespace refdoc
