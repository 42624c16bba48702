#include "refdoc/catalog/LookupSearch.hpp"

#include <algorithm>
#include <deque>
#include <set>
#include <tuple>
#include <utility>

#include "refdoc/text/NearNames.hpp"
#include "refdoc/text/Text.hpp"

namespace refdoc {

namespace {

using reference::docparser::DocResource;
using reference::docparser::LookupResources;
using reference::property::RefItemLookup;

struct FoundRecord {
    NameMatch match;
    const std::u16string* foldedName;
    LookupRecord record;
};

/// The records found, and the folded names that they are sorted by.
struct Found {
    std::vector<FoundRecord> records;
    std::deque<std::u16string> foldedNames;
};

/// Compares addresses first: keys may be long, and most records compared have the same one.
bool hasEarlierProduct(const LookupRecord& left, const LookupRecord& right) {
    return left.product != right.product && *left.product < *right.product;
}

bool precedes(const FoundRecord& left, const FoundRecord& right) {
    const auto order = [](const FoundRecord& found) {
        return std::tie(found.match, *found.foldedName, found.record.item->getName());
    };
    if (order(left) != order(right))
        return order(left) < order(right);
    return hasEarlierProduct(left.record, right.record);
}

void addMatches(const std::u16string& product, const DocResource<RefItemLookup>& document,
                bool installed, const LookupQuery& query, Found& found) {
    for (const auto& [name, items] : document.items) {
        const auto match = query.pattern ? query.pattern->match(name) : NameMatch::Glob;
        if (!match)
            continue;
        const std::u16string& foldedName = found.foldedNames.emplace_back(foldCase(name));
        for (const RefItemLookup& item : items)
            if (!query.type || item.getEntityType() == *query.type)
                found.records.push_back(
                    {*match, &foldedName, {&product, &document.header, &item, installed}});
    }
}

void addMatches(const LookupDocuments& documents, bool installed, const LookupQuery& query,
                Found& found) {
    for (const auto& [product, document] : documents)
        if (!query.product || product == *query.product)
            addMatches(product, document, installed, query, found);
}

std::size_t countItems(const LookupDocuments& documents) {
    std::size_t count = 0;
    for (const auto& [product, document] : documents)
        for (const auto& [name, items] : document.items)
            count += items.size();
    return count;
}

} // namespace

std::vector<LookupRecord> findRecords(const LookupResources& documents, const LookupQuery& query,
                                      Installed installed) {
    Found found;
    if (installed != Installed::Not)
        addMatches(documents.first, true, query, found);
    if (installed != Installed::Only)
        addMatches(documents.second, false, query, found);
    std::stable_sort(found.records.begin(), found.records.end(), precedes);
    std::vector<LookupRecord> records;
    records.reserve(found.records.size());
    for (const FoundRecord& match : found.records)
        records.push_back(match.record);
    return records;
}

std::size_t countRecords(const LookupResources& documents) {
    return countItems(documents.first) + countItems(documents.second);
}

Lines similarNames(std::u16string_view wanted, const LookupResources& documents, LookupQuery query,
                   Installed installed) {
    query.pattern.reset();
    std::set<std::u16string> known;
    for (const LookupRecord& record : findRecords(documents, query, installed))
        known.insert(record.item->getName());
    return similarNames(wanted, known);
}

} // namespace refdoc
