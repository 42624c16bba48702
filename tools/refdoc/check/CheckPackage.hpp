#pragma once

#include "refdoc/check/ResourceText.hpp"

namespace refdoc {

/// Reads the leaves of a zip package as the library does.
void readPackage(const CatalogFile& file, const TextVisitor& visit, const FindingSink& sink);

} // namespace refdoc
