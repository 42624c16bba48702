#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "environment/Services.hpp"

/// The services that are in force unless the host brings its own.
namespace environment::local {

std::u16string installedDocDataRoot();
std::vector<std::u16string> translatedManualLanguages();
std::u16string languageOfMessageLocale();
TopLevelProductList productsOfInstalledProductsFile();
std::u16string supportPackageFolder();
std::unordered_set<std::u16string> namesOfFoldersUnder(const std::u16string& root);

} // namespace environment::local
