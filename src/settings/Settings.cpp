#include "reference/docparser/DocResourceParser.hpp"

#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include "environment/DocProducts.hpp"
#include "settings/Constants.hpp"
#include "settings/ProcessState.hpp"
#include "settings/SupportPackageCache.hpp"

namespace reference::docparser {

TopLevelProductList defaultTopLevelProductsProvider() {
    return doc_products_shared::DocProductCacheManager::getInstance()
        .getDocProductCache()
        ->getInstalledTopLevelDocProducts();
}

namespace DocResourceParser {
namespace {

std::u16string composeFolder(const std::u16string& root, const std::u16string& catalog) {
    std::u16string folder;
    folder.reserve(root.size() + kPathSeparator.size() + catalog.size());
    return folder.append(root).append(kPathSeparator).append(catalog);
}

} // namespace

ReferenceRoots::ReferenceRoots()
    : ReferenceRoots(doc_products_shared::Docroot::getInstance().getDocDataRoot()) {}

ReferenceRoots::ReferenceRoots(std::u16string root)
    : referenceRoot(std::move(root)),
      referenceApiLookupFolder(composeFolder(referenceRoot, kReferenceApiLookupCatalog)),
      referenceApiFolder(composeFolder(referenceRoot, kReferenceApiCatalog)) {}

std::shared_ptr<const ReferenceRoots> getReferenceRoots() {
    const std::lock_guard lock(referenceRootsMutex);
    if (!currentReferenceRoots)
        currentReferenceRoots = std::make_shared<const ReferenceRoots>();
    return currentReferenceRoots;
}

void setReferenceRoot(std::u16string root) {
    const std::lock_guard lock(referenceRootsMutex);
    currentReferenceRoots = std::make_shared<const ReferenceRoots>(std::move(root));
}

void restoreDefaultSettings() {
    const std::scoped_lock rootsAndProducts(referenceRootsMutex, topLevelProductsMutex);
    currentReferenceRoots = std::make_shared<const ReferenceRoots>();
    TopLevelProductsProvider(defaultTopLevelProductsProvider).swap(topLevelProductsProvider);
    supportPackageCache.clear();
}

void clearSupportPackageCache() {
    supportPackageCache.clear();
}

} // namespace DocResourceParser
} // namespace reference::docparser
