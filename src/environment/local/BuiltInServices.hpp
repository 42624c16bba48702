#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "environment/Services.hpp"

/// The services that are used unless the host brings its own.
namespace environment::local {

/// The documentation root beside the installed library, also when its tree was moved; the same at
/// each call.
const std::u16string& installedDocDataRoot();
/// "en" and every language that manual pages are translated into.
std::vector<std::u16string> translatedManualLanguages();
/// The name of the process's message locale, which no other thread may change meanwhile; empty
/// where it is "C".
std::string messageLocale();
/// The first of the translated manuals' languages that `locale` names, else "en". Where it is empty
/// the variables LC_ALL, LC_MESSAGES and LANG name it.
std::u16string languageOfLocale(const std::string& locale);
/// From `installedProducts.json` under the documentation root; never null.
TopLevelProductList productsOfInstalledProductsFile();
/// The folder "supportPackages" under the documentation root.
std::u16string supportPackageFolder();
/// Empty when `root` does not exist; throws `std::filesystem::filesystem_error` when it cannot be
/// listed.
std::unordered_set<std::u16string> namesOfFoldersUnder(const std::u16string& root);

} // namespace environment::local
