#pragma once

#include <set>
#include <string>

#include "refdoc/catalog/CatalogFolder.hpp"
#include "refdoc/catalog/TextReader.hpp"
#include "refdoc/check/findings/Violations.hpp"

namespace refdoc {

/// Reports a file that is read as English although its name seems to mean another language, which
/// also depends on the stems of the other files of its folder.
void checkFileName(const CatalogFile& file, const std::set<std::string>& stems,
                   Violations& violations);

/// Reports why something in a catalog folder is not read as a resource file.
void checkOtherEntry(const OtherEntry& entry, Violations& violations);

/// Reports why an entry of a package is not read, why it goes to other readers than its name says,
/// and why the content of a file or entry cannot be read.
///
/// @param stems the stems of all entries of the package.
void checkAccess(const CatalogFile& file, const CatalogText& text,
                 const std::set<std::string>& stems, Violations& violations);

} // namespace refdoc
