#include "refdoc/check/CheckIndex.hpp"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <filesystem>
#include <functional>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include "refdoc/check/CheckNames.hpp"
#include "refdoc/check/CheckText.hpp"

namespace refdoc {

namespace {

namespace json = boost::json;

void addPagesOf(const json::value* document, std::unordered_set<std::string>& pages) {
    const json::object* object = document->if_object();
    const json::value* items = object ? object->if_contains("refItems") : nullptr;
    if (items == nullptr || !items->is_array())
        return;
    for (const json::value& item : items->as_array()) {
        const json::object* fields = item.if_object();
        const json::value* href = fields ? fields->if_contains("href") : nullptr;
        if (href != nullptr && href->is_string())
            pages.insert(pageOf(href->as_string()));
    }
}

/// Whether the link begins with "name:", as only one that leaves the documentation does.
bool hasScheme(std::string_view link) {
    const std::size_t end = link.find_first_of(":/?#");
    const auto belongs = [](char byte) {
        return std::isalnum(static_cast<unsigned char>(byte)) != 0 || byte == '+' || byte == '-' ||
               byte == '.';
    };
    return end != link.npos && end > 0 && link[end] == ':' &&
           std::all_of(link.begin(), link.begin() + static_cast<std::ptrdiff_t>(end), belongs);
}

/// Escapes that are none stay as they are.
std::string percentDecoded(std::string_view path) {
    std::string decoded;
    for (std::size_t at = 0; at < path.size(); ++at) {
        unsigned char byte = 0;
        const char* const digits = path.data() + at + 1;
        if (path[at] == '%' && path.size() - at > 2 &&
            std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2) {
            decoded += static_cast<char>(byte);
            at += 2;
        } else {
            decoded += path[at];
        }
    }
    return decoded;
}

} // namespace

void CheckIndex::addFile(const CatalogFile& file) {
    if (file.catalog == Catalog::Reference)
        referenceStems_.insert(file.stem);
}

void CheckIndex::addSoundText(const ResourceText& text, const json::value& resource) {
    sound_.insert(versionOf(text));
    if (text.file.catalog == Catalog::Lookup)
        addLookups(text, resource);
    else if (text.language == kEnglish)
        addReferences(text, resource);
}

void CheckIndex::addLookups(const ResourceText& text, const json::value& resource) {
    lookupReaders_.insert(text.readers);
    const bool isEnglish = text.language == kEnglish;
    const auto number = static_cast<TextNumber>(texts_.size());
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

void CheckIndex::addPages(const json::value& resource) {
    addPagesOf(&resource, pages_);
    const json::object* object = resource.if_object();
    const json::value* packages = object ? object->if_contains("supportPackages") : nullptr;
    if (packages == nullptr || !packages->is_array())
        return;
    for (const json::value& package : packages->as_array())
        addPagesOf(&package, pages_);
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

const std::string* CheckIndex::holderOf(const LookupKind& kind, const std::string& key) const {
    const LookupHolders* holders = holdersOf(kind, key);
    return holders == nullptr ? nullptr : &texts_[holders->document];
}

const std::string* CheckIndex::holderOf(const LookupKind& kind, const std::string& key,
                                        const std::string& name) const {
    const LookupHolders* holders = holdersOf(kind, key);
    if (holders == nullptr)
        return nullptr;
    const auto found = holders->names.find(name);
    return found == holders->names.end() ? nullptr : &texts_[found->second];
}

CheckIndex::Version CheckIndex::versionOf(const ResourceText& text) {
    return {text.file.name, text.leafNumber, std::hash<std::string>()(text.content)};
}

std::string pageOf(std::string_view link) {
    const std::string_view path = link.substr(0, link.find_first_of("?#"));
    if (path.empty() || path.starts_with('/') || hasScheme(link))
        return {};
    return std::filesystem::path(percentDecoded(path)).lexically_normal().generic_string();
}

} // namespace refdoc
