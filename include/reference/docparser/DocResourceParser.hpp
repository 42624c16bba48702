#pragma once

#include <map>
#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

#include "environment/DocProducts.hpp"
#include "environment/PathAndText.hpp"
#include "reference/docparser/DocResource.hpp"
#include "reference/docparser/Export.hpp"
#include "reference/docparser/ProductData.hpp"
#include "reference/docparser/RefItem.hpp"

/// The services of the library. All functions may be called from any thread at any time after the
/// library is loaded. Paths, names and language codes are UTF-16; file contents are bytes.
///
/// Once loaded the library stays mapped to the end of the process, also when it is closed, so that
/// what callers still hold of it remains valid. Until then its functions may be called: by
/// destructors of a program's own static objects, and by threads that go on while the process ends.
namespace reference::docparser::DocResourceParser {

/// The folders under which reference data is looked for. A record never changes once it is made.
struct DOCPARSER_API ReferenceRoots {
    /// The folders under the environment's documentation root. What the environment's service
    /// throws passes through.
    ReferenceRoots();

    /// The folders under `root`, which is used as it stands: neither checked nor normalised.
    explicit ReferenceRoots(std::u16string root);

    /// The documentation root.
    std::u16string referenceRoot;
    /// `<root>/docCatalog/referenceapi_lookup`: the lookup files.
    std::u16string referenceApiLookupFolder;
    /// `<root>/docCatalog/referenceapi`: the full reference files.
    std::u16string referenceApiFolder;
};

/// The current roots, never null. Unless roots were set before, the first call makes those under
/// the environment's documentation root.
///
/// @return a snapshot: it stays valid and unchanged for as long as it is held, also after the
///         roots have been replaced. Two calls give the same record when nothing was set between.
/// @throws std::bad_alloc when memory runs out. After it, and after what the documentation root
///         service throws, there are no roots yet, and the next call asks again.
/// @par Thread safety
/// Locks the roots for the copy; at the first call also while the service runs, which must
/// therefore not call a function of this library that takes the roots.
DOCPARSER_API std::shared_ptr<const ReferenceRoots> getReferenceRoots();

/// Makes the roots under `root` the current ones. Nothing else changes, and calls under way keep
/// the roots they began with.
///
/// @param root the folder, used as it stands: neither checked nor normalised.
/// @throws std::bad_alloc when memory runs out; the current roots are then unchanged.
/// @throws std::length_error when the paths would become too long for a string; as above.
/// @par Thread safety
/// Locks the roots.
DOCPARSER_API void setReferenceRoot(std::u16string root);

/// Forgets which hardware support packages are installed, so that the next question reads the
/// installation again. Sets that callers hold stay valid.
///
/// @par Thread safety
/// Locks the support packages.
DOCPARSER_API void clearSupportPackageCache();

/// Goes back to the state after loading: roots under the environment's documentation root
/// (asked for now), products as the environment lists them, support packages not yet read.
///
/// @throws std::bad_alloc when memory runs out. Nothing has changed then, nor when the
///         documentation root service throws, which passes through.
/// @par Thread safety
/// Locks roots and products together, and the support packages inside; the documentation root
/// service runs under these locks.
DOCPARSER_API void restoreDefaultSettings();

/// Reads a whole file into memory.
///
/// @param path the file's path.
/// @return the file's bytes as stored, or an empty string when the file is missing, cannot be
///         opened or cannot be sized; an empty file looks the same. When a file is cut short
///         while it is read, NUL bytes stand for what is missing.
/// @throws std::bad_alloc when memory runs out while the path is converted, the file opened or a
///         record logged. What a log sink throws passes through too; never anything because the
///         file cannot be read.
///
/// Logs on the channel "referenceApi::docparser": "Reading file: " and the path at severity 16,
/// and at severity 512 "Problem reading JSON file: " and the path when an open file cannot be
/// sized or its bytes do not fit into memory.
///
/// @par Complexity
/// One allocation of the file's size and one read.
DOCPARSER_API std::string openAndReadFile(const std::u16string& path);

/// Reads the whole file at `product.getFullPath()`, as `openAndReadFile` does for a path.
DOCPARSER_API std::string openAndReadFile(const ProductPathData& product);

/// Reads the whole content of an entry of an open zip package, which must stay open until the call
/// returns.
///
/// @return the entry's content, or an empty string when it cannot be had whole: a broken checksum
///         or size, encryption, a method other than stored and deflated, or more content than
///         `FileSystemManager::getFileContentSource` hands out.
///
/// Logs "Reading file: " and the product's name (not the entry's) at severity 16, and "Error
/// reading file: " and the name, also at severity 16, when the content cannot be had.
DOCPARSER_API std::string openAndReadFile(const ProductZipData& product);

/// Whether a file name is that of a product resource file: its last extension is exactly "json"
/// or "zip". Letter case counts; nothing else about the name does.
DOCPARSER_API bool isValidFilename(const fl::filesystem::upath& path);

/// Lists the product resource files of one folder: base (English) files and those of the current
/// language. Files of other languages, other extensions, folders, pipes and devices are left out.
///
/// A file is localized when its stem ends with one of `localeSuffixes`; it is of the current
/// language when its stem also ends with `languageSuffix`. The recorded name is the whole stem.
/// Suffixes are compared code unit by code unit; an empty one is a suffix of every stem.
///
/// @param folder the folder's path; an empty one, and one that does not exist, has no files.
/// @param localeSuffixes "_" and the code, for each supported language other than English, as
///        `ParsingTools::getSupportedDocLocales` gives them.
/// @param languageSuffix "_" and the code of the current language.
/// @return the files in the order of their names; when the folder cannot be listed to its end,
///         those found before. Never throws.
DOCPARSER_API ProductFiles getAllProducts(const std::u16string& folder,
                                          const std::vector<std::u16string>& localeSuffixes,
                                          const std::u16string& languageSuffix);

/// The installed top-level products, as the environment's service (or `setTestProducts`) gives
/// them: asked anew at each call, never cached here.
///
/// @return what the service gives, an immutable list that stays valid for as long as it is held.
/// @par Failures
/// What the service throws passes through.
/// @par Thread safety
/// Locks the products while the service runs: a service must not call this function,
/// `isProductInstalled`, `setTestProducts` or `restoreDefaultSettings`.
DOCPARSER_API doc_products_shared::TopLevelProductList getTopLevelProducts();

/// The names of the installed hardware support packages: read from the installation at the first
/// call and then kept until `clearSupportPackageCache` or `restoreDefaultSettings`.
///
/// @return an immutable set, never null, that stays valid for as long as it is held. An
///         installation that cannot be listed gives an empty set, which is kept like any other.
/// @par Failures
/// What the service throws that says where the installation lies passes through; nothing is kept
/// then.
/// @par Thread safety
/// Locks the support packages, at the first call also while they are listed.
DOCPARSER_API std::shared_ptr<const std::unordered_set<std::u16string>>
getHardwareSupportPackages();

/// Whether a product key names an installed top-level product, by its short name, or an installed
/// hardware support package. Letter case counts.
///
/// @param name a help folder or a base code, as the documents' keys are.
/// @par Failures
/// What `getTopLevelProducts` and `getHardwareSupportPackages` throw passes through.
/// @par Complexity
/// One call of the service and a scan of its list, then one hash lookup.
/// @par Thread safety
/// Locks the support packages, then the products, never both at once.
DOCPARSER_API bool isProductInstalled(const std::u16string& name);

/// For tests: pretends that exactly these products and support packages are installed, until
/// `restoreDefaultSettings`. The roots stay as they are.
///
/// @param products short names, one product each, in this order; the other texts of a product
///        are "testDisplayName", "testHelpLocation", "testBaseCode", "testAltShortName" and
///        "testAvailability".
/// @param supportPackages names of support packages; `clearSupportPackageCache` forgets them.
/// @throws std::bad_alloc when memory runs out. Nothing has changed then, unless it ran out after
///         the products were set, in which case the support packages are as before.
/// @par Thread safety
/// Locks products and support packages together.
DOCPARSER_API void setTestProducts(const std::vector<std::u16string>& products,
                                   const std::vector<std::u16string>& supportPackages);

/// Reads the lookup files of all products under the documentation root: plain JSON files and the
/// entries of zip packages, English and in the current language, merged by product key and split by
/// what is installed.
///
/// The localized document of a key wins, with its header, and English fills the gaps: names that
/// it lacks, and, for a name whose English list is longer, the lookups whose href it lacks. Of
/// several English documents of a key the first one found wins, of several localized ones the
/// last; zip packages come before plain files, both in the order of their names. In a zip package
/// with a single entry the package's own name says the language; elsewhere the entries' names do.
///
/// @return the documents of installed products and support packages, and those of all others.
///         A file or package that cannot be read or breaks the format is left out, the others
///         stand, and so does what a package gave before it failed; nothing is reported beyond
///         what `openAndReadFile` logs. What `isProductInstalled` throws costs the remaining
///         documents of the file at hand.
/// @throws std::bad_alloc when memory runs out outside the reading of a file, the handling of a
///         package and the question whether a product is installed. What the language service
///         throws passes through, and what the documentation root service throws when there are
///         no roots yet.
///
/// @par Format
/// As for `getResourceFile`, with items that have at least the strings "name", "refpurpose" and
/// "href"; formats.md describes it whole.
/// @par Thread safety
/// Nothing is locked while files are read and parsed; nothing is cached.
/// @par Complexity
/// About linear in the bytes of all files, however many documents a key has and however long the
/// lists of a name are, plus one call of `isProductInstalled` for each document.
DOCPARSER_API LookupResources getResourceLookupFiles();

/// Reads the full reference entries of one resource: the file `<name>.json` in the reference API
/// folder, and, unless the documentation language is English, `<name>_<language>.json` laid over
/// it.
///
/// @param name the file name without language suffix and extension, used as it stands.
/// @return the documents of the resource: the product's own under its help folder, each support
///         package's under its base code; their items are keyed by href. Where both files have a
///         document, its header is the localized one, and each href has the localized file's list
///         of items when that file knows the href, else the English one. A file that is missing,
///         unreadable, not JSON, or breaks the format counts as empty, so the map may be empty.
/// @throws std::bad_alloc when memory runs out outside the reading of a file. What the language
///         service throws passes through, and what the documentation root service throws when there
///         are no roots yet.
///
/// @par Format
/// A UTF-8 JSON object with the strings "productName", "baseCode", "helpFolder" and "helpLocation",
/// the array "refItems", and optionally "supportPackages", an array of objects of the same form. An
/// item has at least the strings "href" and "refpurpose"; formats.md describes it whole. Members
/// that are not part of the format are passed over. A text with more values than four million and
/// one for each 8 bytes counts as broken.
/// @par Thread safety
/// Nothing is locked while files are read and parsed; nothing is cached.
DOCPARSER_API std::map<std::u16string, DocResource<RefItem>>
getResourceFile(const std::u16string& name);

} // namespace reference::docparser::DocResourceParser
