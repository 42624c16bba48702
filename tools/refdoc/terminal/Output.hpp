#pragma once

#include <initializer_list>
#include <string_view>

#include "refdoc/text/Text.hpp"

namespace refdoc {

/// Occupies the standard streams that the process was started without, so that no other file can
/// take their place and be written to.
void reserveStandardStreams();

/// Writes all of `text` to standard output.
///
/// @throws std::system_error when it cannot be written.
void writeOutput(std::string_view text);

/// Reports on stderr what went wrong, under the name of the program: in one line, and further ones
/// below it. Whatever a line quotes, it stays one line and is safe to print.
void reportError(std::string_view line, std::initializer_list<Lines> further = {});

} // namespace refdoc
