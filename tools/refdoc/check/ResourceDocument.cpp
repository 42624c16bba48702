#include "refdoc/check/ResourceDocument.hpp"

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

} // namespace

std::vector<ResourceDocument> documentsOf(const json::value& resource) {
    std::vector<ResourceDocument> documents;
    std::set<std::string> known;
    forEachDocument(resource, [&](const ResourceDocument& document) {
        if (known.insert(document.key).second)
            documents.push_back(document);
    });
    return documents;
}

void forEachDocument(const json::value& resource,
                     const std::function<void(const ResourceDocument&)>& take) {
    take({&resource, {}, textMember(resource, "helpFolder")});
    const json::array* packages = listMember(resource, "supportPackages");
    for (std::size_t i = 0; packages != nullptr && i < packages->size(); ++i)
        take({&packages->at(i), fmt::format("/supportPackages/{}", i),
              textMember(packages->at(i), "baseCode")});
}

const json::array* listMember(const json::value& value, std::string_view name) {
    const json::value* member = memberOf(value, name);
    return member == nullptr ? nullptr : member->if_array();
}

std::string textMember(const json::value& value, std::string_view name) {
    const json::value* member = memberOf(value, name);
    return member != nullptr && member->is_string() ? std::string(member->as_string())
                                                    : std::string();
}

} // namespace refdoc
