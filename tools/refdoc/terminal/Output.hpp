#pragma once

#include <initializer_list>
#include <string_view>

#include "refdoc/text/Text.hpp"

namespace refdoc {

/// Occupies the standard streams that the process was started without, so that no other file can
/// take their numbers and be written to.
void reserveStandardStreams();

/// Writes all of `text` to standard output.
///
/// @throws std::system_error on failure.
void writeOutput(std::string_view text);

/// Reports on stderr what went wrong, with the name of the program, in one line followed by further
/// ones. Quoted texts cannot break a line and are made safe to print.
void reportError(std::string_view line, std::initializer_list<Lines> further = {});

} // namespace refdoc
