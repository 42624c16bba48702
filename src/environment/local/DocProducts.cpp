#include "environment/DocProducts.hpp"

#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

#include "environment/PathAndText.hpp"
#include "environment/local/BuiltInServices.hpp"
#include "environment/local/CodePath.hpp"
#include "environment/local/CurrentServices.hpp"

namespace environment::local {

namespace {

/// The program or the shared library that holds this code, with all links resolved. Nothing where
/// the system cannot say.
std::optional<std::filesystem::path> findCode() {
    std::error_code failure;
    std::filesystem::path code = std::filesystem::canonical(pathOfCode(), failure);
    return failure ? std::nullopt : std::make_optional(std::move(code));
}

std::u16string docrootOfInstallation() {
    const std::optional<std::filesystem::path> code = findCode();
    const std::filesystem::path datadir =
        code ? code->parent_path() / DOCENVIRONMENT_DATADIR_FROM_CODE : DOCENVIRONMENT_DATADIR;
    return fl::i18n::from_utf8(
        (datadir / "reference-docparser" / "docroot").lexically_normal().string());
}

/// Found while the code is loaded: its path may be relative to a folder that the program leaves
/// later.
[[maybe_unused]] const std::u16string& docrootOfLoadTime = installedDocDataRoot();

} // namespace

const std::u16string& installedDocDataRoot() {
    static const auto& docroot = *new std::u16string(docrootOfInstallation());
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
    static const auto& collector = *new auto(std::make_shared<DocProductCollector>());
    return collector;
}

} // namespace doc_products_shared
