#pragma once

#include <string>
#include <string_view>

namespace refdoc {

/// `word` as a shell must be given it.
std::string shellQuoted(std::string_view word);

/// What a shell makes of `word`, which may be unfinished, when nothing in it needs more than taking
/// quotes and backslashes away and putting the home folder in the place of a leading "~/".
std::string shellUnquoted(std::string_view word);

} // namespace refdoc
