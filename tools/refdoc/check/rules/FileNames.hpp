#pragma once

#include <set>
#include <string>

#include "refdoc/catalog/CatalogFolder.hpp"
#include "refdoc/catalog/TextReader.hpp"
#include "refdoc/check/findings/Violations.hpp"

namespace refdoc {

/// The language that a file's name seems to be meant to say, when it is read as English: that also
/// depends on the stems of the other files of its folder.
void checkFileName(const CatalogFile& file, const std::set<std::string>& stems,
                   Violations& violations);

/// Why something in a catalog folder is not a resource file.
void checkOtherEntry(const OtherEntry& entry, Violations& violations);

/// Why an entry of a package is not read, or for other readers than its name says, and why the
/// content of a file or entry cannot be had.
///
/// @param stems those of all entries of the package.
void checkAccess(const CatalogFile& file, const CatalogText& text,
                 const std::set<std::string>& stems, Violations& violations);

} // namespace refdoc
