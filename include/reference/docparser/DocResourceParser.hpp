#pragma once

#include <map>
#include <memory>
#include <string>

#include "environment/PathAndText.hpp"
#include "reference/docparser/DocResource.hpp"
#include "reference/docparser/Export.hpp"
#include "reference/docparser/ProductData.hpp"
#include "reference/docparser/RefItem.hpp"

/// The services of the library. All functions may be called from any thread at any time after the
/// library is loaded. Paths, names and language codes are UTF-16; file contents are bytes.
namespace reference::docparser::DocResourceParser {

/// The folders under which reference data is looked for. A record never changes once it is made.
struct DOCPARSER_API ReferenceRoots {
    /// The roots under the environment's documentation data root. What the environment's service
    /// throws passes through.
    ReferenceRoots();

    /// The roots under `root`, which is used as it stands: neither checked nor normalised.
    explicit ReferenceRoots(std::u16string root);

    std::u16string referenceRoot;
    /// `<root>/docCatalog/referenceapi_lookup`: the lookup files.
    std::u16string referenceApiLookupFolder;
    /// `<root>/docCatalog/referenceapi`: the full reference files.
    std::u16string referenceApiFolder;
};

/// The roots in force, never null. The first call finds none and makes those under the
/// environment's documentation data root, unless roots were set before.
///
/// @return a snapshot: it stays valid and unchanged for as long as it is held, also after the
///         roots have been replaced. Two calls give the same record when nothing was set between.
/// @throws what the documentation root service throws; no roots are in force then, and the next
///         call asks again.
/// @par Thread safety Locks the roots for the copy; at the first call also while the service runs,
///      which must therefore not call a function of this library that takes the roots.
DOCPARSER_API std::shared_ptr<const ReferenceRoots> getReferenceRoots();

/// Puts the roots under `root` in force for later calls. Nothing else changes, and calls under way
/// keep the roots they began with.
///
/// @throws std::bad_alloc, std::length_error; the roots in force are then unchanged.
DOCPARSER_API void setReferenceRoot(std::u16string root);

/// Forgets which hardware support packages are installed, so that the next question reads the
/// installation again. Sets that callers hold stay valid.
DOCPARSER_API void clearSupportPackageCache();

/// Goes back to the state after loading: roots under the environment's documentation data root
/// (asked for now), products as the environment lists them, support packages not yet read.
///
/// @throws what the documentation root service throws; nothing has changed then.
/// @par Thread safety Locks roots and products together, and the support packages inside; the
///      documentation root service runs under these locks.
DOCPARSER_API void restoreDefaultSettings();

/// Reads a whole file into memory.
///
/// @param path the file's path.
/// @return the file's bytes as stored, or an empty string when the file is missing, cannot be
///         opened or cannot be sized; the two cases of an empty string cannot be told apart.
/// @throws only what writing a diagnostic record throws.
///
/// Logs on the channel "referenceApi::docparser": "Reading file: " and the path at severity 16,
/// and at severity 512 "Problem reading JSON file: " and the path when an open file cannot be
/// sized or its bytes do not fit into memory.
///
/// @par Complexity One allocation of the file's size and one read.
DOCPARSER_API std::string openAndReadFile(const std::u16string& path);

/// The same for the file at `product.getFullPath()`.
DOCPARSER_API std::string openAndReadFile(const ProductPathData& product);

/// The same for an entry of an open zip package, which must stay open until the call returns.
///
/// @return the entry's content, or an empty string when it cannot be had whole: a broken checksum
///         or size, encryption, an unknown method, more than 1 GiB.
///
/// Logs "Reading file: " and the product's name (not the entry's) at severity 16, and "Error
/// reading file: " and the name, also at severity 16, when the content cannot be had.
DOCPARSER_API std::string openAndReadFile(const ProductZipData& product);

/// Whether a file name is that of a product resource file: its last extension is exactly "json"
/// or "zip". Letter case counts; nothing else about the name does.
DOCPARSER_API bool isValidFilename(const fl::filesystem::upath& path);

/// Reads the full reference entries of one resource: the file `<name>.json` in the reference API
/// folder, and, unless the documentation language is English, `<name>_<language>.json` laid over
/// it.
///
/// @param name the file name without language suffix and extension, used as it stands.
/// @return the documents of the resource: the product's own under its help folder, each support
///         package's under its base code; their items are keyed by href. Where both files have a
///         document, its header is the localized one, and each href has the localized file's list
///         of items when that file knows the href, else the English one. A file that is missing,
///         unreadable, no JSON, or breaks the format counts as empty, so the map may be empty.
/// @throws what the documentation root service (when no roots are in force yet) and the language
///         service throw, and std::bad_alloc outside the reading of a file.
///
/// @par Format A UTF-8 JSON object with the strings "productName", "baseCode", "helpFolder" and
///      "helpLocation", the array "refItems", and optionally "supportPackages", an array of objects
///      of the same form. An item has at least the strings "href" and "refpurpose". The whole
///      format stands in docs/formats.md.
/// @par Thread safety Nothing is locked while files are read and parsed; nothing is cached.
DOCPARSER_API std::map<std::u16string, DocResource<RefItem>>
getResourceFile(const std::u16string& name);

} // namespace reference::docparser::DocResourceParser
