#pragma once

#include <vector>

#include "refdoc/check/CheckFiles.hpp"

namespace refdoc {

/// Reads the leaves of a zip package as the library does.
std::vector<Finding> readPackage(const CatalogFile& file, const TextVisitor& visit);

} // namespace refdoc
