#include "refdoc/check/CheckIndex.hpp"

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include "refdoc/check/CheckLinks.hpp"
#include "refdoc/check/CheckNames.hpp"
#include "refdoc/check/ResourceDocument.hpp"

namespace refdoc {

namespace json = boost::json;

void CheckIndex::addFile(const CatalogFile& file) {
    if (file.catalog == Catalog::Reference)
        referenceStems_.insert(file.stem);
}

void CheckIndex::addSoundText(const ResourceText& text, const json::value& resource) {
    sound_.insert_or_assign(versionOf(text), static_cast<TextNumber>(texts_.size()));
    if (text.file.catalog == Catalog::Lookup)
        addLookups(text, resource);
    else if (text.language == kEnglish)
        addReferences(text, resource);
}

void CheckIndex::addLookups(const ResourceText& text, const json::value& resource) {
    const bool isEnglish = text.language == kEnglish;
    const TextNumber number = lookupIndex_.add(text.language, text.readers, resource);
    texts_.push_back(text.shownName());
    LookupDocuments& documents = lookups_[{text.language, text.readers}];
    for (const ResourceDocument& document : documentsOf(resource)) {
        const auto [held, isNew] = documents.try_emplace(document.key, LookupHolders{number, {}});
        if (!isEnglish)
            held->second.document = number;
        for (const json::value& item : document.value->at("refItems").as_array()) {
            TextNumber& holder =
                held->second.names.try_emplace(std::string(item.at("name").as_string()), number)
                    .first->second;
            if (!isEnglish)
                holder = number;
        }
    }
}

void CheckIndex::addReferences(const ResourceText& text, const json::value& resource) {
    for (const ResourceDocument& document : documentsOf(resource)) {
        HrefCounts& hrefs = englishReferences_[text.file.resource][document.key];
        for (const json::value& item : document.value->at("refItems").as_array())
            ++hrefs[std::string(item.at("href").as_string())];
    }
}

void CheckIndex::addPages(const ResourceText& text, const json::value& resource) {
    std::set<std::string_view>& own = pagesOf_[text.file.resource];
    forEachDocument(resource, [&](const ResourceDocument& document) {
        if (const json::array* items = listMember(*document.value, "refItems"))
            for (const json::value& item : *items)
                own.insert(*pages_.insert(pageOf(textMember(item, "href"))).first);
    });
}

std::optional<std::uint32_t> CheckIndex::soundNumber(const ResourceText& text) const {
    const auto found = sound_.find(versionOf(text));
    return found == sound_.end() ? std::nullopt : std::optional(found->second);
}

bool CheckIndex::hasPage(const std::string& resource, const std::string& page) const {
    const auto own = pagesOf_.find(resource);
    return own != pagesOf_.end() && own->second.contains(page);
}

bool CheckIndex::hasEnglish(const ResourceText& text) const {
    return englishReferences_.contains(text.file.resource);
}

const CheckIndex::HrefCounts* CheckIndex::englishItems(const ResourceText& text,
                                                       const std::string& key) const {
    const auto resource = englishReferences_.find(text.file.resource);
    if (resource == englishReferences_.end())
        return nullptr;
    const auto found = resource->second.find(key);
    return found == resource->second.end() ? nullptr : &found->second;
}

const CheckIndex::LookupHolders* CheckIndex::holdersOf(const LookupKind& kind,
                                                       const std::string& key) const {
    const auto documents = lookups_.find(kind);
    if (documents == lookups_.end())
        return nullptr;
    const auto found = documents->second.find(key);
    return found == documents->second.end() ? nullptr : &found->second;
}

CheckIndex::Version CheckIndex::versionOf(const ResourceText& text) {
    return {text.file.name, text.leafNumber, std::hash<std::string>()(text.content)};
}

} // namespace refdoc
