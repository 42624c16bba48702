#pragma once

#include "refdoc/check/findings/Violations.hpp"
#include "refdoc/format/Format.hpp"

namespace refdoc {

/// Reports deviations of a text from its format, regardless of other files: faults that cost the
/// whole text, values that readers get differently than intended, and repeated members and keys.
///
/// @param text must be JSON.
void checkFormat(const TextAndTree& text, const Format& format, Violations& violations);

/// Whether the library reads the resource.
bool isReadable(const boost::json::value& resource, const Format& format);

} // namespace refdoc
