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
/// several at once, with no lock of the environment held. A service may throw anything: the caller
/// of the environment sees it.
///
/// The library `docparser` holds locks of its own while it asks for the root, the products and the
/// support packages. A service that calls one of the functions named below as forbidden
/// waits for such a lock forever, at once or when another thread happens to ask something else.
/// Waiting for a thread that is in one of these functions is the same as calling it. All other
/// functions may be called.
struct Services {
    /// The documentation root: a folder, without a separator at its end.
    ///
    /// Asked under the lock of the roots, by `restoreDefaultSettings` also under that of the
    /// products, and by the built-in services for products and support packages under theirs. So it
    /// must not call a function that takes any of them: `getReferenceRoots`, `setReferenceRoot`,
    /// `restoreDefaultSettings`, `clearSupportPackageCache`, `getTopLevelProducts`,
    /// `getHardwareSupportPackages`, `isProductInstalled`, `setTestProducts`,
    /// `getResourceLookupFiles` and `getResourceFile`.
    std::function<std::u16string()> docDataRoot{};
    /// Codes such as "ja" or "pt_BR", "en" among them. Asked under no lock: it may call anything
    /// that does not ask for the languages itself.
    std::function<std::vector<std::u16string>()> supportedDocLanguages{};
    /// One such code: the current language. Asked under no lock: it may call anything that does not
    /// ask for the language itself.
    std::function<std::u16string()> docLanguage{};
    /// The installed products, in any order; null counts as none.
    ///
    /// Asked under the lock of the products, so it must not call `getTopLevelProducts`,
    /// `isProductInstalled`, `setTestProducts`, `restoreDefaultSettings` or
    /// `getResourceLookupFiles`; nor, since the roots and the products are not locked inside each
    /// other, `getReferenceRoots`, `setReferenceRoot` or `getResourceFile`.
    std::function<TopLevelProductList()> installedTopLevelDocProducts{};
    /// The folder under which hardware support packages are installed; it need not exist.
    ///
    /// Asked under the lock of the support packages, which comes after the two others, so it must
    /// not call the functions that are named at `docDataRoot`.
    std::function<std::u16string()> supportPackageRoot{};
    /// The names of the hardware support packages that are installed under `root`.
    ///
    /// Asked under the lock of the support packages: it must not call the functions that are
    /// named at `docDataRoot`.
    std::function<std::unordered_set<std::u16string>(const std::u16string& root)>
        installedHardwareSupportPackages{};
};

/// Makes the host's services the current ones; an empty member means the built-in one. Any thread
/// may call it: calls of a service that are under way run to their end on the services they began
/// with, which live until then. What the library has taken before stays: its roots until
/// `restoreDefaultSettings`, the support packages also until `clearSupportPackageCache`. The name
/// of the process's message locale is taken anew, so no other thread may call `setlocale`
/// meanwhile.
///
/// @param services the host's; what their functions refer to must live until others replace them
///        and no call of them is under way.
/// @throws std::bad_alloc when memory runs out; the current services are then unchanged.
void setServices(Services services);

/// Makes the built-in services the current ones again, as `setServices({})` does.
///
/// They read a documentation root, a plain folder: the one that the current `docDataRoot` service
/// names, which is `share/reference-docparser/docroot` beside the installed library unless
/// the host says otherwise.
///
/// - installed products: `<root>/installedProducts.json`, an array of objects with the string
///   members "shortName" (required), "displayName", "helpLocation", "baseCode", "altShortName" and
///   "availability". Read again only when the file's size or time has changed. A missing file
///   means that none is installed, a broken one throws `std::runtime_error`.
/// - support packages: one folder each under `<root>/supportPackages`.
/// - language: the first supported one that the process's message locale names (`ja_JP.UTF-8`
///   gives ja), else en. The locale is what `setlocale(LC_MESSAGES, nullptr)` gives while the
///   library is loaded and at each call of `setServices` and `resetServices`; a copy of its name is
///   kept, so threads may call `setlocale` at any other time. A host that sets the locale itself
///   calls this function afterwards. Where the locale is "C", the variables LC_ALL, LC_MESSAGES and
///   LANG name it, whenever the language is asked for.
/// - supported languages: those for which translated manual pages exist.
void resetServices();

} // namespace environment

#pragma GCC visibility pop
