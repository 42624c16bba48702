#include "reference/docparser/DocResourceParser.hpp"

#include <algorithm>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_set>
#include <utility>

#include "environment/PathAndText.hpp"
#include "environment/SupportPackages.hpp"
#include "settings/ProcessState.hpp"

namespace reference::docparser::DocResourceParser {
namespace {

// An installation that cannot be listed counts as one without support packages.
std::unordered_set<std::u16string> listSupportPackages(const std::u16string& root) {
    try {
        return install::product_impl::utils::getInstalledHardwareSupportPackages(root);
    } catch (...) {
        return {};
    }
}

bool hasShortName(const TopLevelProductList& products, const std::string& name) {
    return products &&
           std::any_of(products->begin(), products->end(), [&name](const auto& product) {
               return product && product->getShortName() == name;
           });
}

} // namespace

doc_products_shared::TopLevelProductList getTopLevelProducts() {
    const std::lock_guard lock(topLevelProductsMutex);
    return topLevelProductsProvider();
}

std::shared_ptr<const std::unordered_set<std::u16string>> getHardwareSupportPackages() {
    const std::lock_guard lock(supportPackageCacheMutex);
    if (!supportPackageCache) {
        const std::u16string root = SupportPackageRootReader().getSupportPackageRootNoCreate();
        supportPackageCache =
            std::make_shared<const std::unordered_set<std::u16string>>(listSupportPackages(root));
    }
    return supportPackageCache;
}

bool isProductInstalled(const std::u16string& name) {
    const std::string shortName = fl::i18n::to_string(name);
    const auto supportPackages = getHardwareSupportPackages();
    return hasShortName(getTopLevelProducts(), shortName) || supportPackages->contains(name);
}

} // namespace reference::docparser::DocResourceParser
