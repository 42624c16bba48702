#pragma once

#include <set>
#include <string>
#include <vector>

#include "refdoc/catalog/LookupSearch.hpp"

namespace refdoc {

/// The entries of a name in one resource, according to the lookup records. By convention a document
/// belongs to the resource that its header's help folder names; the document of a support package,
/// to that of the product it extends.
struct NamedResource {
    std::u16string resource;
    std::u16string productName;
    std::u16string purpose;
    std::set<std::u16string> products{}; ///< the keys of the documents with the name
    std::set<std::u16string> hrefs{};    ///< of the name's records
};

/// A document that has the name, but whose help folder cannot be the name of a resource.
struct UnusableHelpFolder {
    std::u16string product;
    std::u16string helpFolder;
};

struct NamedResources {
    std::vector<NamedResource> found; ///< sorted by name
    std::vector<UnusableHelpFolder> unusable;
};

/// The resources with entries of exactly this name.
NamedResources resourcesDocumenting(const LookupDocuments& documents, const std::u16string& name);

} // namespace refdoc
