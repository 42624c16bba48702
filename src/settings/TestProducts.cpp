#include "reference/docparser/DocResourceParser.hpp"

#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "environment/DocProducts.hpp"
#include "environment/PathAndText.hpp"
#include "settings/ProcessState.hpp"
#include "settings/SupportPackageCache.hpp"

namespace reference::docparser::DocResourceParser {
namespace {

using doc_products_shared::TopLevelDocProduct;

TopLevelProductList makeTestProducts(const std::vector<std::u16string>& names) {
    std::vector<std::shared_ptr<const TopLevelDocProduct>> products;
    products.reserve(names.size());
    for (const std::u16string& name : names) {
        products.push_back(std::make_shared<const TopLevelDocProduct>(
            "testDisplayName", "testHelpLocation", fl::i18n::to_string(name), "testBaseCode",
            "testAltShortName", "testAvailability", TopLevelDocProduct::Properties()));
    }
    return std::make_shared<const std::vector<std::shared_ptr<const TopLevelDocProduct>>>(
        std::move(products));
}

} // namespace

void setTestProducts(const std::vector<std::u16string>& products,
                     const std::vector<std::u16string>& supportPackages) {
    const std::scoped_lock productsAndPackages(topLevelProductsMutex, supportPackageCache.mutex());
    TopLevelProductsProvider([list = makeTestProducts(products)] {
        return list;
    }).swap(topLevelProductsProvider);
    supportPackageCache.replaceLocked(std::make_shared<SupportPackageCache::Names::element_type>(
        supportPackages.begin(), supportPackages.end(), supportPackages.size()));
}

} // namespace reference::docparser::DocResourceParser
