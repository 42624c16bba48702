#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace refdoc {

/// `word` as a shell must be given it.
std::string shellQuoted(std::string_view word);

/// The quotes of bash: '...', "..." and $'...'.
enum class ShellQuote { None, Single, Double, Escapes };

/// A command line of which the user is still typing the last word.
struct TypedLine {
    std::vector<std::string> words; ///< without quotes; never empty
    ShellQuote open = ShellQuote::None;
    /// What bash keeps of the last word when it completes it, without quotes: all before the quote
    /// that is open, else up to the last character at which it breaks words.
    std::string kept{};
};

/// Reads a line that needs no more than taking quotes and backslashes away and putting the home
/// folder in the place of a leading "~/". Nothing for a line that only the shell itself can read.
///
/// @param breaks the characters at which bash breaks words, quotes and blanks aside.
std::optional<TypedLine> readTypedLine(std::string_view line, std::string_view breaks);

/// `text` as bash must be given it to put it in the place of an unfinished word in which `open` is
/// open. It begins with the quotation mark that is open and ends with its counterpart, so that it
/// keeps its meaning wherever bash inserts it. `text` has no control characters.
std::string bashCompletion(std::string_view text, ShellQuote open);

} // namespace refdoc
