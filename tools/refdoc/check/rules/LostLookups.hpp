#pragma once

#include "refdoc/check/findings/Violations.hpp"
#include "refdoc/check/index/LookupFates.hpp"
#include "refdoc/check/index/ParsedText.hpp"
#include "refdoc/check/index/RootIndex.hpp"

namespace refdoc {

/// Reports the lookups of a readable text that readers miss because of other texts of the root.
void checkLookups(const ParsedText& parsed, const RootIndex& index, const LookupFates& fates,
                  Violations& violations);

} // namespace refdoc
