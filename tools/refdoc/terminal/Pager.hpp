#pragma once

#include <string_view>

#include "refdoc/terminal/Terminal.hpp"

namespace refdoc {

/// Shows text to the user: on a terminal through the pager, which is the shell command in MANPAGER,
/// else in PAGER, else `less`; without one (the command is empty or `cat`), or when it cannot be
/// started, on standard output itself.
///
/// @throws std::system_error when standard output cannot be written.
void showText(std::string_view text, const Terminal& terminal);

} // namespace refdoc
