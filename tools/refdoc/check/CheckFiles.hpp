#pragma once

#include <string>
#include <vector>

#include "refdoc/check/CheckFinding.hpp"
#include "refdoc/check/ResourceText.hpp"

namespace refdoc {

struct CatalogFolder {
    std::vector<CatalogFile> files; ///< in the order of their names
    std::vector<Finding> findings;  ///< about names
};

/// Lists one folder of the root in force by the rules for names, for all languages at once.
CatalogFolder listCatalog(Catalog catalog);

/// Why the content of a file is empty: nothing for one that is.
std::string readFailure(const std::u16string& path);

/// Reads a file as the library does. What cannot be read is told and not visited.
void readTexts(const CatalogFile& file, const TextVisitor& visit, const FindingSink& sink);

} // namespace refdoc
