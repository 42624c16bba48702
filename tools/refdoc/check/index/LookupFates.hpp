#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "refdoc/catalog/LookupIndex.hpp"

namespace refdoc {

/// Which readers do not get a lookup because of others of its key and name.
struct LookupFate {
    std::uint32_t text;
    std::uint32_t key;
    std::uint32_t item;
    bool isLost = false;     ///< those that its text is for do not get exactly this one
    bool isLinkLost = false; ///< nor one of its href
    /// Of a text for everybody: a bit for each language whose readers get none of its href.
    std::uint64_t linkLostFor = 0;
};

/// What becomes of the lookups of a root: keeps those that not all get.
class LookupFates {
public:
    /// @param index must be finished.
    explicit LookupFates(const LookupIndex& index);

    /// Null for a lookup that everybody gets who gets its text.
    const LookupFate* find(std::uint32_t text, std::uint32_t key, std::uint32_t item) const;

    /// The languages of those who get none of its href though its text is for everybody.
    std::vector<std::string> readersWithoutLink(const LookupFate& fate) const;

private:
    void addGroup(const LookupIndex& index, LookupIndex::Group group, NumberSet& hrefs);
    std::uint64_t bitOf(const std::string& readers) const;

    /// Those other than English that texts are for, in their order; of more than 64 the first.
    std::vector<std::string> languages_;
    std::vector<LookupFate> fates_; ///< in their order
};

} // namespace refdoc
