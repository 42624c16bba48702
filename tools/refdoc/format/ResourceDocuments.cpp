#include "refdoc/format/ResourceDocuments.hpp"

#include <cstddef>
#include <set>
#include <utility>

#include <boost/json/object.hpp>
#include <fmt/format.h>

namespace refdoc {

namespace {

namespace json = boost::json;

const json::value* memberOf(const json::value& value, std::string_view name) {
    const json::object* object = value.if_object();
    return object == nullptr ? nullptr : object->if_contains(name);
}

/// The elements of a list; empty for anything else.
const json::array& listMember(const json::value& value, std::string_view name) {
    static const json::array none;
    const json::value* member = memberOf(value, name);
    return member != nullptr && member->is_array() ? member->get_array() : none;
}

} // namespace

std::vector<ResourceDocument> allDocumentsOf(const json::value& resource) {
    std::vector<ResourceDocument> documents{{&resource, {}, textMember(resource, "helpFolder")}};
    for (const json::value& package : listMember(resource, "supportPackages"))
        documents.push_back({&package, fmt::format("/supportPackages/{}", documents.size() - 1),
                             textMember(package, "baseCode")});
    return documents;
}

std::vector<ResourceDocument> documentsOf(const json::value& resource) {
    std::vector<ResourceDocument> documents = allDocumentsOf(resource);
    std::set<std::string> known;
    std::erase_if(documents, [&known](const ResourceDocument& document) {
        return !known.insert(document.key).second;
    });
    return documents;
}

const json::array& itemsOf(const ResourceDocument& document) {
    return listMember(*document.value, "refItems");
}

std::string itemPointer(const ResourceDocument& document, std::size_t item) {
    return fmt::format("{}/refItems/{}", document.pointer, item);
}

std::string textMember(const json::value& value, std::string_view name) {
    const json::value* member = memberOf(value, name);
    return member != nullptr && member->is_string() ? std::string(member->get_string())
                                                    : std::string();
}

} // namespace refdoc
