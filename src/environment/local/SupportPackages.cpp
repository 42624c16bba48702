#include "environment/SupportPackages.hpp"

#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "environment/DocProducts.hpp"
#include "environment/PathAndText.hpp"
#include "environment/local/BuiltInServices.hpp"
#include "environment/local/CurrentServices.hpp"
#include "environment/local/FolderNames.hpp"
#include "environment/local/OpenedFile.hpp"

namespace environment::local {

std::u16string supportPackageFolder() {
    return doc_products_shared::Docroot::getInstance().getDocDataRoot() +
           fl::filesystem::upath_constant::PATHNAME_SEPARATOR + u"supportPackages";
}

std::unordered_set<std::u16string> namesOfFoldersUnder(const std::u16string& root) {
    std::vector<std::u16string> names;
    const std::optional<std::string> path = accessPath(root);
    if (!path)
        return {};
    const std::error_code failure = addNames(*path, "*", EntryKind::Folder, names);
    if (failure && failure != std::errc::no_such_file_or_directory)
        throw std::filesystem::filesystem_error("support packages", *path, failure);
    return {names.begin(), names.end()};
}

} // namespace environment::local

std::u16string SupportPackageRootReader::getSupportPackageRootNoCreate() const {
    return environment::local::currentServices()->supportPackageRoot();
}

namespace install::product_impl::utils {

std::unordered_set<std::u16string> getInstalledHardwareSupportPackages(const std::u16string& root) {
    return environment::local::currentServices()->installedHardwareSupportPackages(root);
}

} // namespace install::product_impl::utils
