#pragma once

#include <set>
#include <string>
#include <vector>

#include "refdoc/catalog/LookupSearch.hpp"

namespace refdoc {

/// What one resource has under a name, as the lookup records say. By convention a document stands
/// in the resource that its header's help folder names, a support package's document in that of the
/// product it extends.
struct NamedResource {
    std::u16string resource;
    std::u16string productName;
    std::u16string purpose;
    std::set<std::u16string> products{}; ///< the keys of the documents with such records
    std::set<std::u16string> hrefs{};    ///< of these records
};

/// A document with records of the name whose help folder cannot be the name of a resource.
struct UnusableHelpFolder {
    std::u16string product;
    std::u16string helpFolder;
};

struct NamedResources {
    std::vector<NamedResource> found; ///< in the order of their names
    std::vector<UnusableHelpFolder> unusable;
};

/// The resources that have entries of exactly that name.
NamedResources resourcesDocumenting(const LookupDocuments& documents, const std::u16string& name);

} // namespace refdoc
