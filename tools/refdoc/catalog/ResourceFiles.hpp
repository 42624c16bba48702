#pragma once

#include <string>
#include <string_view>

#include "refdoc/text/Text.hpp"

namespace refdoc {

/// Whether a file directly in the reference folder can have this name. Names taken from documents
/// must not lead anywhere else.
bool isResourceName(std::u16string_view name);

/// The files that may hold a resource, with the outcome of reading each, as further lines of a
/// message.
Lines triedFiles(const std::u16string& resource,
                 std::string_view outcome = "unreadable, not in the format, or without entries");

} // namespace refdoc
