#pragma once

#include <string_view>

#include "refdoc/pages/Page.hpp"

namespace refdoc {

/// Lays out a description, which is plain text with four conventions: an empty line separates
/// paragraphs, a line that begins with four blanks is verbatim, a paragraph that begins with "- "
/// is a list item, and a one-line paragraph that begins with "## " is a heading.
void addDescription(Page& page, std::u16string_view description, std::size_t indent);

} // namespace refdoc
