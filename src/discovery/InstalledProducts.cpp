#include "reference/docparser/DocResourceParser.hpp"

#include <algorithm>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_set>

#include "environment/PathAndText.hpp"
#include "settings/ProcessState.hpp"
#include "settings/SupportPackageCache.hpp"

namespace reference::docparser::DocResourceParser {
namespace {

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
    return supportPackageCache.get();
}

bool isProductInstalled(const std::u16string& name) {
    const std::string shortName = fl::i18n::to_string(name);
    const auto supportPackages = getHardwareSupportPackages();
    return hasShortName(getTopLevelProducts(), shortName) || supportPackages->contains(name);
}

} // namespace reference::docparser::DocResourceParser
