#pragma once

#include <string>
#include <string_view>

#include "refdoc/text/Text.hpp"

namespace refdoc {

/// Whether a file of the reference folder itself can be called by `name`. What a document says must
/// not lead anywhere else.
bool isResourceName(std::u16string_view name);

/// The files that may hold a resource, one to a further line of a message, with what came of
/// reading them.
Lines triedFiles(const std::u16string& resource,
                 std::string_view outcome = "unreadable, not in the format, or without entries");

} // namespace refdoc
