#include "refdoc/check/index/RootIndex.hpp"

#include <boost/json/array.hpp>

#include "refdoc/check/index/LinkPaths.hpp"
#include "refdoc/format/ResourceDocuments.hpp"

namespace refdoc {

namespace json = boost::json;

void RootIndex::addFile(const CatalogFile& file) {
    if (file.catalog == Catalog::Reference)
        referenceStems_.insert(file.stem);
}

void RootIndex::addSoundText(const ParsedText& parsed) {
    if (parsed.file.catalog == Catalog::Lookup)
        addLookups(parsed);
    else if (parsed.text.language == kEnglish)
        addReferences(parsed.file, parsed.tree);
}

void RootIndex::addLookups(const ParsedText& parsed) {
    const CatalogText& text = parsed.text;
    const bool isEnglish = text.language == kEnglish;
    const TextNumber number = lookupIndex_.add(text.language, text.readers, parsed.tree);
    numbers_.emplace(TextPlace(parsed.file.name, text.number), number);
    texts_.push_back(parsed.shownName());
    LookupDocuments& documents = lookups_[{text.language, text.readers}];
    for (const ResourceDocument& document : documentsOf(parsed.tree)) {
        const auto [held, isNew] = documents.try_emplace(document.key, LookupHolders{number, {}});
        if (!isEnglish)
            held->second.document = number;
        for (const json::value& item : itemsOf(document)) {
            TextNumber& holder =
                held->second.names.try_emplace(textMember(item, "name"), number).first->second;
            if (!isEnglish)
                holder = number;
        }
    }
}

void RootIndex::addReferences(const CatalogFile& file, const json::value& resource) {
    for (const ResourceDocument& document : documentsOf(resource)) {
        HrefCounts& hrefs = englishReferences_[file.resource][document.key];
        for (const json::value& item : itemsOf(document))
            ++hrefs[textMember(item, "href")];
    }
}

void RootIndex::addPages(const CatalogFile& file, const json::value& resource) {
    std::set<std::string_view>& own = pagesOf_[file.resource];
    for (const ResourceDocument& document : allDocumentsOf(resource))
        for (const json::value& item : itemsOf(document))
            own.insert(*pages_.insert(pageOf(textMember(item, "href"))).first);
}

std::optional<std::uint32_t> RootIndex::numberOf(const ParsedText& parsed) const {
    const auto found = numbers_.find(TextPlace(parsed.file.name, parsed.text.number));
    return found == numbers_.end() ? std::nullopt : std::optional(found->second);
}

bool RootIndex::hasPage(const std::string& resource, const std::string& page) const {
    const auto own = pagesOf_.find(resource);
    return own != pagesOf_.end() && own->second.contains(page);
}

bool RootIndex::hasEnglish(const std::string& resource) const {
    return englishReferences_.contains(resource);
}

const RootIndex::HrefCounts* RootIndex::englishItems(const std::string& resource,
                                                     const std::string& key) const {
    const auto documents = englishReferences_.find(resource);
    if (documents == englishReferences_.end())
        return nullptr;
    const auto found = documents->second.find(key);
    return found == documents->second.end() ? nullptr : &found->second;
}

const RootIndex::LookupHolders* RootIndex::holdersOf(const LookupKind& kind,
                                                     const std::string& key) const {
    const auto documents = lookups_.find(kind);
    if (documents == lookups_.end())
        return nullptr;
    const auto found = documents->second.find(key);
    return found == documents->second.end() ? nullptr : &found->second;
}

} // namespace refdoc
