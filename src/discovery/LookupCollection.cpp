#include "reference/docparser/DocResourceParser.hpp"

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "discovery/FileNameRules.hpp"
#include "environment/PathAndText.hpp"
#include "environment/ZipPackages.hpp"
#include "fileaccess/ResourceReading.hpp"
#include "reference/docparser/ParsingTools.hpp"
#include "resources/DocResourceMerge.hpp"
#include "resources/ReferenceResource.hpp"

namespace reference::docparser {
namespace {

using reference::property::RefItemLookup;
using LookupDocuments = ParsedResource<RefItemLookup>;
using ResourceParser = std::function<LookupDocuments(const std::string& content)>;
using ProductFilter = std::function<bool(const std::u16string& key)>;

/// The fixed inputs of one collection.
struct ProductScanContext {
    const ResourceParser* parseFunction;
    const ProductFilter* installedFilter;
    std::vector<std::u16string> localeSuffixes;
    std::u16string languageSuffix;
};

/// The results of one collection so far.
struct Collection {
    LookupResources resources;
    LookupMerge merge;
};

/// Puts each document into the map of its product. When the filter fails, drops the rest.
void mergeDocuments(LookupDocuments documents, bool isLocalized, const ProductFilter& isInstalled,
                    Collection& collection) {
    while (!documents.empty()) {
        bool installed = false;
        try {
            installed = isInstalled(documents.begin()->first);
        } catch (...) {
            return;
        }
        LookupResources& resources = collection.resources;
        LookupDocuments& target = installed ? resources.first : resources.second;
        insertOrMerge(target, documents.extract(documents.begin()),
                      [&](auto& held, auto& incoming) {
                          collection.merge.mergeDocResource(held, incoming, isLocalized);
                      });
    }
}

template <typename ProductRecord>
void mergeProductResources(const std::vector<ProductRecord>& records,
                           const ProductScanContext& context, Collection& collection) {
    std::string content;
    for (const ProductRecord& record : records) {
        LookupDocuments documents;
        try {
            readContent(record, content);
            documents = (*context.parseFunction)(content);
        } catch (...) {
            continue;
        }
        mergeDocuments(std::move(documents), record.isNonEnglishLocale(), *context.installedFilter,
                       collection);
    }
}

/// The language of a leaf. A package with a single one decides by its own name; if that is
/// localized, the leaf must have the current language's suffix as well. In other packages each
/// leaf's name decides.
FileLanguage getLeafLanguage(const std::u16string& stem, bool isOnlyLeaf,
                             const ProductPathData& package, const ProductScanContext& context) {
    if (!isOnlyLeaf)
        return getFileLanguage(stem, context.localeSuffixes, context.languageSuffix);
    if (!package.isNonEnglishLocale())
        return FileLanguage::Base;
    return stem.ends_with(context.languageSuffix) ? FileLanguage::Current : FileLanguage::Other;
}

std::vector<ProductZipData>
selectLeaves(const std::vector<opc::zqservices::FileSystemEntry>& leaves,
             opc::zqservices::FileSystemManager& manager, const ProductPathData& package,
             const ProductScanContext& context) {
    std::vector<ProductZipData> selected;
    selected.reserve(leaves.size());
    for (const auto& leaf : leaves) {
        const fl::filesystem::upath path(
            fl::filesystem::detail::make_native_form(leaf.getBaseName(), true));
        if (!DocResourceParser::isValidFilename(path))
            continue;
        std::u16string stem = fl::filesystem::detail::extract_stem(path.ustring());
        const FileLanguage language = getLeafLanguage(stem, leaves.size() == 1, package, context);
        if (language != FileLanguage::Other)
            selected.emplace_back(std::move(stem), language == FileLanguage::Current, leaf,
                                  &manager);
    }
    return selected;
}

void collectFromZipPackage(const ProductPathData& record, opc::FileSystemOpsSelector& operations,
                           const ProductScanContext& context, Collection& collection) {
    opc::zippackage::ZipPhysicalPackage physicalPackage(record.getFullPath(), operations, true);
    opc::model::Package package(physicalPackage);
    opc::zqservices::FileSystemManager manager(package, operations);
    package.open(opc::interfaces::OpenMode::Read);
    const auto leaves = manager.getAllLeafs();
    mergeProductResources(selectLeaves(leaves, manager, record, context), context, collection);
}

Collection collectFromZipPackages(const std::vector<ProductPathData>& packages,
                                  const ProductScanContext& context) {
    opc::FileSystemOpsSelector operations(
        storage::microservicestoragesystem::GetStorageSystemReference());
    Collection collection;
    for (const ProductPathData& package : packages) {
        try {
            collectFromZipPackage(package, operations, context, collection);
        } catch (...) {
            // A package that fails adds nothing more; what it has added stays.
        }
    }
    return collection;
}

LookupResources collectProductResources(const std::u16string& folder,
                                        const ResourceParser& parseFunction,
                                        const ProductFilter& installedFilter) {
    if (folder.empty())
        return {};
    namespace tools = DocResourceParser::ParsingTools;
    const ProductScanContext context{&parseFunction, &installedFilter,
                                     tools::getSupportedDocLocales(),
                                     tools::kLocaleSeparator + tools::getCurrentLocale()};
    const ProductFiles files =
        DocResourceParser::getAllProducts(folder, context.localeSuffixes, context.languageSuffix);
    Collection collection = collectFromZipPackages(files.second, context);
    mergeProductResources(files.first, context, collection);
    collection.merge.finish();
    return std::move(collection.resources);
}

} // namespace

namespace DocResourceParser {

LookupResources getResourceLookupFiles() {
    const auto roots = getReferenceRoots();
    return collectProductResources(roots->referenceApiLookupFolder,
                                   parseReferenceResource<RefItemLookup>, isProductInstalled);
}

} // namespace DocResourceParser
} // namespace reference::docparser
