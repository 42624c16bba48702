#pragma once

#include "refdoc/check/findings/Violations.hpp"
#include "refdoc/check/index/LookupFates.hpp"
#include "refdoc/check/index/ParsedText.hpp"
#include "refdoc/check/index/RootIndex.hpp"

namespace refdoc {

/// Reports what readers miss of a readable text of a lookup file because of other ones of its root.
void checkLookups(const ParsedText& parsed, const RootIndex& index, const LookupFates& fates,
                  Violations& violations);

} // namespace refdoc
