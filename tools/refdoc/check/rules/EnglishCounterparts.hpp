#pragma once

#include "refdoc/check/findings/Violations.hpp"
#include "refdoc/check/index/ParsedText.hpp"
#include "refdoc/check/index/RootIndex.hpp"

namespace refdoc {

/// Reports what a readable localized text has without an English counterpart, and the English items
/// that it hides from its readers.
void checkCounterparts(const ParsedText& parsed, const RootIndex& index, Violations& violations);

} // namespace refdoc
