#pragma once

#include "refdoc/check/CheckFinding.hpp"
#include "refdoc/check/ResourceDocument.hpp"
#include "refdoc/check/ResourceText.hpp"

namespace refdoc {

/// Tells the texts of a sound document that are read byte by byte, and so come out garbled, since
/// they are not ASCII.
void checkSevenBit(Catalog catalog, const ResourceDocument& document, FindingList& findings);

} // namespace refdoc
