#include "refdoc/CheckIndex.hpp"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <filesystem>
#include <functional>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include "refdoc/CheckText.hpp"
#include "refdoc/ResourceNames.hpp"

namespace refdoc {

namespace {

namespace json = boost::json;

void addItems(const ResourceDocument& document, std::string_view member, CheckIndex::Names& names) {
    for (const json::value& item : document.value->at("refItems").as_array())
        names.emplace(item.at(member).as_string());
}

void addPagesOf(const json::value* document, CheckIndex::Names& pages) {
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

} // namespace

void CheckIndex::addFile(const CatalogFile& file) {
    if (file.catalog == Catalog::Reference)
        referenceStems_.insert(file.stem);
}

void CheckIndex::addSoundText(const ResourceText& text, const json::value& resource) {
    sound_.insert(versionOf(text));
    const bool isEnglish = text.language == kEnglish;
    Documents* references = text.file.catalog == Catalog::Reference && isEnglish
                                ? &englishReferences_[text.file.resource]
                                : nullptr;
    for (const ResourceDocument& document : documentsOf(resource)) {
        if (text.file.catalog == Catalog::Lookup)
            holders_[{text.language, document.key}].push_back(idOf(text));
        if (references != nullptr)
            addItems(document, "href", (*references)[document.key]);
        else if (isEnglish)
            addItems(document, "name", englishLookups_[document.key]);
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

const CheckIndex::Names* CheckIndex::englishItems(const ResourceText& text,
                                                  const std::string& key) const {
    const Documents* documents = &englishLookups_;
    if (text.file.catalog == Catalog::Reference) {
        const auto resource = englishReferences_.find(text.file.resource);
        if (resource == englishReferences_.end())
            return nullptr;
        documents = &resource->second;
    }
    const auto found = documents->find(key);
    return found == documents->end() ? nullptr : &found->second;
}

bool CheckIndex::hasEnglish(const ResourceText& text) const {
    return englishReferences_.contains(text.file.resource);
}

const std::vector<std::string>& CheckIndex::holders(const ResourceText& text,
                                                    const std::string& key) const {
    return holders_.at({text.language, key});
}

std::string CheckIndex::idOf(const ResourceText& text) {
    return text.leaf.empty() ? text.file.name : text.file.name + ':' + text.leaf;
}

CheckIndex::Version CheckIndex::versionOf(const ResourceText& text) {
    return {idOf(text), std::hash<std::string>()(text.content)};
}

std::string pageOf(std::string_view link) {
    const std::string_view path = link.substr(0, link.find_first_of("?#"));
    if (path.empty() || path.starts_with('/') || hasScheme(link))
        return {};
    return std::filesystem::path(path).lexically_normal().generic_string();
}

} // namespace refdoc
