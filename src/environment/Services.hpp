#pragma once

#include <functional>
#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

#include "environment/DocProducts.hpp"

#pragma GCC visibility push(default)

namespace environment {

using doc_products_shared::TopLevelProductList;

/// The services that are the host's own. Each is called from whichever thread asks, possibly from
/// several at once, with no lock of the environment held. The library does hold a lock of its own
/// while it asks for the root, the products and the support packages: see
/// `reference/docparser/DocResourceParser.hpp` for what these services must not call back. A
/// service may throw anything: the caller of the environment sees it.
struct Services {
    /// The documentation data root: a folder, without a separator at its end.
    std::function<std::u16string()> docDataRoot{};
    /// Codes such as "ja" or "pt_BR", "en" among them.
    std::function<std::vector<std::u16string>()> supportedDocLanguages{};
    /// One such code: the language in force now.
    std::function<std::u16string()> docLanguage{};
    /// The installed products, in any order; null counts as none.
    std::function<TopLevelProductList()> installedTopLevelDocProducts{};
    /// The folder under which hardware support packages are installed; it need not exist.
    std::function<std::u16string()> supportPackageRoot{};
    /// The names of the hardware support packages that are installed under `root`.
    std::function<std::unordered_set<std::u16string>(const std::u16string& root)>
        installedHardwareSupportPackages{};
};

/// Puts the host's services in force; an empty member means the built-in one. Any thread may call
/// it: calls of a service that are under way run to their end on the services they began with,
/// which live for so long. What the library has taken before stays: its roots until
/// `restoreDefaultSettings`, the support packages also until `clearSupportPackageCache`.
///
/// @param services the host's; what their functions refer to must live until others are in force
///        and no call of them is under way.
/// @throws std::bad_alloc when memory runs out; the services in force are then unchanged.
void setServices(Services services);

/// Puts the built-in services in force again, as `setServices({})` does.
///
/// They read a documentation data root, a plain folder: the one that the `docDataRoot` service in
/// force names, which is `share/reference-docparser/docroot` beside the installed library unless
/// the host says otherwise.
///
/// - installed products: `<root>/installedProducts.json`, an array of objects with the string
///   members "shortName" (required), "displayName", "helpLocation", "baseCode", "altShortName" and
///   "availability". Read again only when the file's size or time has changed. A missing file
///   means that none is installed, a broken one throws `std::runtime_error`.
/// - support packages: one folder each under `<root>/supportPackages`.
/// - language: the first supported one that the process's message locale names (`ja_JP.UTF-8`
///   gives ja), else en. The locale is that of `setlocale`; where it is "C", the variables LC_ALL,
///   LC_MESSAGES and LANG say it.
/// - supported languages: those for which translated manual pages exist.
void resetServices();

} // namespace environment

#pragma GCC visibility pop
