#include "refdoc/check/rules/EnglishCounterparts.hpp"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include <boost/json/array.hpp>
#include <fmt/format.h>

#include "refdoc/format/ResourceDocuments.hpp"

namespace refdoc {

namespace {

namespace json = boost::json;

Violation noEnglishDocument(const ResourceDocument& document) {
    return {.fault = Fault::NoEnglish,
            .message = fmt::format("there is no sound English document {}: readers of other "
                                   "languages get nothing",
                                   inQuotes(document.key)),
            .pointer = document.pointer};
}

Violation noEnglishItem(const ResourceDocument& document, std::size_t item,
                        std::string_view member) {
    return {.fault = Fault::NoEnglish,
            .message = fmt::format("the {} {} is not in the English document", member,
                                   inQuotes(textMember(itemsOf(document)[item], member))),
            .pointer = fmt::format("{}/{}", itemPointer(document, item), member)};
}

/// Lookup documents correspond by their keys, whatever the names of their files.
void checkNames(const ResourceDocument& document, const RootIndex& index, Violations& violations) {
    const RootIndex::LookupHolders* english = index.holdersOf(kEnglishForAll, document.key);
    if (english == nullptr)
        return violations.add(noEnglishDocument(document));
    const json::array& items = itemsOf(document);
    for (std::size_t i = 0; i < items.size(); ++i)
        if (!english->names.contains(textMember(items[i], "name")))
            violations.add(noEnglishItem(document, i, "name"));
}

RootIndex::HrefCounts countHrefs(const json::array& items) {
    RootIndex::HrefCounts counts;
    for (const json::value& item : items)
        ++counts[textMember(item, "href")];
    return counts;
}

/// The items with an href replace all English items with the same href.
void checkItems(const ResourceDocument& document, const RootIndex::HrefCounts& english,
                const std::string& language, Violations& violations) {
    const json::array& items = itemsOf(document);
    RootIndex::HrefCounts localized = countHrefs(items);
    for (std::size_t i = 0; i < items.size(); ++i) {
        const std::string href = textMember(items[i], "href");
        const auto counterpart = english.find(href);
        const std::size_t count = std::exchange(localized[href], 0); // once for each href
        if (counterpart == english.end())
            violations.add(noEnglishItem(document, i, "href"));
        else if (count > 0 && count < counterpart->second)
            violations.add(
                {.fault = Fault::ReplacedItem,
                 .message = fmt::format("English has {} items with this href: readers of {} get "
                                        "only the {} here",
                                        counterpart->second, language, count),
                 .pointer = itemPointer(document, i)});
    }
}

void checkReferences(const ParsedText& parsed, const RootIndex& index, Violations& violations) {
    const std::string& resource = parsed.file.resource;
    if (!index.hasReferenceFile(resource))
        return violations.add(
            {.fault = Fault::NoEnglish,
             .message = fmt::format("there is no English file {}.json: readers of other languages "
                                    "get nothing",
                                    resource),
             .pointer = ""});
    if (!index.hasEnglish(resource))
        return;
    for (const ResourceDocument& document : documentsOf(parsed.tree))
        if (const RootIndex::HrefCounts* english = index.englishItems(resource, document.key))
            checkItems(document, *english, parsed.text.language, violations);
        else
            violations.add(noEnglishDocument(document));
}

} // namespace

void checkCounterparts(const ParsedText& parsed, const RootIndex& index, Violations& violations) {
    if (parsed.text.language == kEnglish)
        return;
    if (parsed.file.catalog == Catalog::Reference)
        return checkReferences(parsed, index, violations);
    for (const ResourceDocument& document : documentsOf(parsed.tree))
        checkNames(document, index, violations);
}

} // namespace refdoc
