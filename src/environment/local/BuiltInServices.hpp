#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "environment/Services.hpp"

/// The services that are in force unless the host brings its own.
namespace environment::local {

/// Beside the installed library.
std::u16string installedDocDataRoot();
/// "en" and every language into which manual pages are translated.
std::vector<std::u16string> translatedManualLanguages();
/// The first of those that the process's message locale names, else "en".
std::u16string languageOfMessageLocale();
/// From `installedProducts.json` under the documentation data root; never null.
TopLevelProductList productsOfInstalledProductsFile();
/// Under the documentation data root.
std::u16string supportPackageFolder();
/// Empty when `root` does not exist; throws `std::filesystem::filesystem_error` when it cannot be
/// listed.
std::unordered_set<std::u16string> namesOfFoldersUnder(const std::u16string& root);

} // namespace environment::local
