#include "refdoc/check/index/LookupFates.hpp"

#include <algorithm>
#include <iterator>
#include <set>
#include <string_view>
#include <tuple>

#include "refdoc/catalog/CatalogFolder.hpp"

namespace refdoc {

namespace {

constexpr std::size_t kMostLanguages = 64;

auto placeOf(const LookupFate& fate) {
    return std::tuple(fate.text, fate.key, fate.item);
}

bool isLess(const IndexedLookup* left, const IndexedLookup* right) {
    const auto valuesOf = [](const IndexedLookup* lookup) {
        return std::tie(lookup->href, lookup->purpose, lookup->kinds);
    };
    return valuesOf(left) < valuesOf(right);
}

/// The lookups of a group that readers of one language get.
class Delivered {
public:
    Delivered(const LookupIndex& index, LookupIndex::Group group, std::string_view readers,
              NumberSet& hrefs)
        : lookups_(index.lookupsFor(group, readers, hrefs)), hrefs_(hrefs) {
        std::sort(lookups_.begin(), lookups_.end(), isLess);
        hrefs_.clear();
        for (const IndexedLookup* lookup : lookups_)
            hrefs_.insert(lookup->href);
    }

    bool has(const IndexedLookup& lookup) const {
        return std::binary_search(lookups_.begin(), lookups_.end(), &lookup, isLess);
    }
    bool hasHref(const IndexedLookup& lookup) const { return hrefs_.contains(lookup.href); }

private:
    LookupIndex::Lookups lookups_;
    NumberSet& hrefs_;
};

/// The fate of a lookup among the readers that its text is meant for.
void setLosses(LookupFate& fate, const IndexedLookup& lookup, const Delivered& delivered) {
    fate.isLinkLost = !delivered.hasHref(lookup);
    fate.isLost = fate.isLinkLost || !delivered.has(lookup);
}

} // namespace

LookupFates::LookupFates(const LookupIndex& index) {
    std::set<std::string> readers;
    for (std::uint32_t text = 0; text < index.textCount(); ++text)
        if (index.readersOf(text) != kEnglish && readers.size() < kMostLanguages)
            readers.insert(index.readersOf(text));
    languages_.assign(readers.begin(), readers.end());
    NumberSet hrefs = index.emptySet();
    for (const LookupIndex::Group group : index.groups())
        if (group.front().text != group.back().text) // one text alone loses nothing
            addGroup(index, group, hrefs);
    std::sort(fates_.begin(), fates_.end(), [](const LookupFate& left, const LookupFate& right) {
        return placeOf(left) < placeOf(right);
    });
}

void LookupFates::addGroup(const LookupIndex& index, LookupIndex::Group group, NumberSet& hrefs) {
    std::vector<LookupFate> fates;
    fates.reserve(group.size());
    for (const IndexedLookup& lookup : group)
        fates.push_back({.text = lookup.text, .key = lookup.key, .item = lookup.item});
    std::set<std::string> languages = index.ownReaders(group);
    languages.emplace(kEnglish);
    for (const std::string& readers : languages) {
        const Delivered delivered(index, group, readers, hrefs);
        const std::uint64_t bit = bitOf(readers);
        for (std::size_t i = 0; i < group.size(); ++i) {
            const std::string& own = index.readersOf(group[i].text);
            if (own == readers)
                setLosses(fates[i], group[i], delivered);
            else if (own == kEnglish && !delivered.hasHref(group[i]))
                fates[i].linkLostFor |= bit;
        }
    }
    std::copy_if(fates.begin(), fates.end(), std::back_inserter(fates_),
                 [](const LookupFate& fate) { return fate.isLost || fate.linkLostFor != 0; });
}

/// 0 for English, and for languages beyond the limit.
std::uint64_t LookupFates::bitOf(const std::string& readers) const {
    const auto found = std::find(languages_.begin(), languages_.end(), readers);
    return found == languages_.end() ? 0 : std::uint64_t{1} << (found - languages_.begin());
}

std::vector<std::string> LookupFates::readersWithoutLink(const LookupFate& fate) const {
    std::vector<std::string> readers;
    for (std::size_t i = 0; i < languages_.size(); ++i)
        if ((fate.linkLostFor >> i & 1) != 0)
            readers.push_back(languages_[i]);
    return readers;
}

const LookupFate* LookupFates::find(std::uint32_t text, std::uint32_t key,
                                    std::uint32_t item) const {
    const std::tuple place(text, key, item);
    const auto found = std::lower_bound(
        fates_.begin(), fates_.end(), place,
        [](const LookupFate& fate, const auto& wanted) { return placeOf(fate) < wanted; });
    return found != fates_.end() && placeOf(*found) == place ? &*found : nullptr;
}

} // namespace refdoc
