#pragma once

#include "refdoc/check/findings/Violations.hpp"
#include "refdoc/check/index/ParsedText.hpp"
#include "refdoc/check/index/RootIndex.hpp"

namespace refdoc {

/// Reports what a readable localized text has that there is not in English, and English items that
/// it takes from its readers.
void checkCounterparts(const ParsedText& parsed, const RootIndex& index, Violations& violations);

} // namespace refdoc
