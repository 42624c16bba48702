#pragma once

#include <string_view>

#include "refdoc/terminal/Terminal.hpp"

namespace refdoc {

/// Shows text to the user. On a terminal it goes through the pager: the shell command in MANPAGER,
/// else in PAGER, else `less`. It goes straight to standard output if that is not a terminal, if
/// the command is empty or `cat`, or if the pager cannot be started.
///
/// @throws std::system_error if standard output cannot be written.
void showText(std::string_view text, const Terminal& terminal);

} // namespace refdoc
