#pragma once

#include "refdoc/check/findings/Violations.hpp"
#include "refdoc/format/Format.hpp"

namespace refdoc {

/// Reports where a text deviates from its format, whatever other files there are: what costs the
/// whole text, what comes through otherwise than meant, and members and keys that are there twice.
///
/// @param text must be JSON.
void checkFormat(const TextAndTree& text, const Format& format, Violations& violations);

/// Whether the library reads the resource.
bool isReadable(const boost::json::value& resource, const Format& format);

} // namespace refdoc
