#include "environment/DocProducts.hpp"

#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include <dlfcn.h>

#include "environment/PathAndText.hpp"
#include "environment/local/BuiltInServices.hpp"
#include "environment/local/CurrentServices.hpp"

namespace environment::local {

namespace {

/// The folder of the shared library, or of the program, that holds this function.
std::filesystem::path codeFolder() {
    Dl_info module{};
    if (::dladdr(reinterpret_cast<const void*>(&codeFolder), &module) == 0)
        return {};
    std::error_code unresolved;
    const std::filesystem::path resolved = std::filesystem::canonical(module.dli_fname, unresolved);
    return (unresolved ? std::filesystem::path(module.dli_fname) : resolved).parent_path();
}

std::u16string docrootBesideLibrary() {
    const std::filesystem::path docroot =
        codeFolder() / DOCENVIRONMENT_DATADIR_FROM_CODE / "reference-docparser" / "docroot";
    const std::string text = docroot.lexically_normal().string();
    return fl::i18n::codecvt_string_to_ustring("utf8", true).convert(text.data(), text.size());
}

} // namespace

std::u16string installedDocDataRoot() {
    static const std::u16string docroot = docrootBesideLibrary();
    return docroot;
}

} // namespace environment::local

namespace doc_products_shared {

const Docroot& Docroot::getInstance() {
    static const Docroot instance;
    return instance;
}

std::u16string Docroot::getDocDataRoot() const {
    return environment::local::currentServices()->docDataRoot();
}

DocProduct::DocProduct(std::string shortName) : shortName_(std::move(shortName)) {}

DocProduct::~DocProduct() = default;

TopLevelDocProduct::TopLevelDocProduct(std::string displayName, std::string helpLocation,
                                       std::string shortName, std::string baseCode,
                                       std::string altShortName, std::string availability,
                                       Properties properties)
    : DocProduct(std::move(shortName)), displayName_(std::move(displayName)),
      helpLocation_(std::move(helpLocation)), baseCode_(std::move(baseCode)),
      altShortName_(std::move(altShortName)), availability_(std::move(availability)),
      properties_(std::move(properties)) {}

TopLevelProductList DocProductCollector::getInstalledTopLevelDocProducts() const {
    return environment::local::currentServices()->installedTopLevelDocProducts();
}

const DocProductCacheManager& DocProductCacheManager::getInstance() {
    static const DocProductCacheManager instance;
    return instance;
}

std::shared_ptr<DocProductCollector> DocProductCacheManager::getDocProductCache() const {
    static const auto collector = std::make_shared<DocProductCollector>();
    return collector;
}

} // namespace doc_products_shared
