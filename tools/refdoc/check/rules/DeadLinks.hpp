#pragma once

#include "refdoc/check/findings/Violations.hpp"
#include "refdoc/check/index/ParsedText.hpp"
#include "refdoc/check/index/RootIndex.hpp"

namespace refdoc {

/// Reports links of a readable text that lead nowhere inside the root.
void checkLinks(const ParsedText& parsed, const RootIndex& index, Violations& violations);

} // namespace refdoc
