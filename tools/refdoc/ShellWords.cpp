#include "refdoc/ShellWords.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdlib>

namespace refdoc {

namespace {

bool isPlain(char character) {
    constexpr std::string_view marks = "_-./:+,@%=";
    const bool letter =
        (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
    return letter || (character >= '0' && character <= '9') || marks.find(character) != marks.npos;
}

} // namespace

std::string shellQuoted(std::string_view word) {
    if (!word.empty() && std::all_of(word.begin(), word.end(), isPlain))
        return std::string(word);
    std::string quoted = "'";
    for (const char character : word)
        character == '\'' ? quoted += "'\\''" : quoted += character;
    return quoted + "'";
}

std::string shellUnquoted(std::string_view word) {
    std::string text;
    if (const char* home = std::getenv("HOME"); home != nullptr && word.starts_with("~/")) {
        text = home;
        word.remove_prefix(1);
    }
    char quote = '\0';
    for (std::size_t at = 0; at < word.size(); ++at) {
        const char character = word[at];
        const bool isQuote = character == '\'' || character == '"';
        if (character == quote)
            quote = '\0';
        else if (quote == '\0' && isQuote)
            quote = character;
        else if (character != '\\' || quote == '\'')
            text += character;
        else if (++at < word.size())
            text += word[at];
    }
    return text;
}

} // namespace refdoc
