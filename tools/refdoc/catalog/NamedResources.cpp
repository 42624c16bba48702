#include "refdoc/catalog/NamedResources.hpp"

#include <map>
#include <utility>

#include "refdoc/catalog/ResourceFiles.hpp"

namespace refdoc {

namespace {

using reference::property::RefItemLookup;
using LookupDocument = LookupDocuments::mapped_type;

/// The first document with the name gives the resource its product name and purpose.
NamedResource begun(const LookupDocument& document, const RefItemLookup& first) {
    return {.resource = document.header.getHelpFolder(),
            .productName = document.header.getProductName(),
            .purpose = first.getPurpose()};
}

} // namespace

NamedResources resourcesDocumenting(const LookupDocuments& documents, const std::u16string& name) {
    NamedResources result;
    std::map<std::u16string, NamedResource> resources;
    for (const auto& [product, document] : documents) {
        const auto items = document.items.find(name);
        if (items == document.items.end() || items->second.empty())
            continue;
        const std::u16string& folder = document.header.getHelpFolder();
        if (!isResourceName(folder)) {
            result.unusable.push_back({.product = product, .helpFolder = folder});
            continue;
        }
        NamedResource& resource =
            resources.try_emplace(folder, begun(document, items->second.front())).first->second;
        resource.products.insert(product);
        for (const RefItemLookup& item : items->second)
            resource.hrefs.insert(item.getHref());
    }
    for (auto& [folder, resource] : resources)
        result.found.push_back(std::move(resource));
    return result;
}

} // namespace refdoc
