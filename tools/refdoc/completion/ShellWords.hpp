#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace refdoc {

/// `word`, quoted for a shell.
std::string shellQuoted(std::string_view word);

/// The quotes of bash: '...', "..." and $'...'.
enum class ShellQuote { None, Single, Double, Escapes };

/// A command line of which the user is still typing the last word.
struct TypedLine {
    std::vector<std::string> words; ///< without quotes; never empty
    ShellQuote open = ShellQuote::None;
    /// The part of the last word that bash keeps when it completes the word, with quotes removed:
    /// everything before the open quote, or else up to the last character at which it breaks words.
    std::string kept{};
};

/// Reads a line that takes no more than removing quotes and backslashes and expanding a leading
/// "~/". Returns nothing for a line that only the shell itself can read.
///
/// @param breaks the characters at which bash breaks words, besides quotes and blanks.
std::optional<TypedLine> readTypedLine(std::string_view line, std::string_view breaks);

/// `text` as bash must insert it in place of an unfinished word within the quote `open`. Begins
/// with the open quotation mark and ends with its counterpart, so that it keeps its meaning
/// wherever bash inserts it. `text` must not contain control characters.
std::string bashCompletion(std::string_view text, ShellQuote open);

} // namespace refdoc
