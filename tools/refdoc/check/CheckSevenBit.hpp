#pragma once

#include "refdoc/check/CheckFiles.hpp"
#include "refdoc/check/CheckFinding.hpp"

namespace refdoc {

struct ResourceDocument;

/// Tells the texts of a sound document that are read byte by byte, and so come out garbled, since
/// they are not ASCII.
void checkSevenBit(Catalog catalog, const ResourceDocument& document, FindingList& findings);

} // namespace refdoc
