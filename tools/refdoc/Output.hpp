#pragma once

#include <string_view>

namespace refdoc {

/// Occupies the standard streams that the process was started without, so that no other file can
/// take their place and be written to.
void reserveStandardStreams();

/// Writes all of `text` to standard output.
///
/// @throws std::system_error when it cannot be written.
void writeOutput(std::string_view text);

/// Tells the user on stderr what went wrong, under the name of the program.
void reportError(std::string_view message);

} // namespace refdoc
