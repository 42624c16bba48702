#include "refdoc/completion/ShellWords.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <utility>

namespace refdoc {

namespace {

/// Whether `character` stands for itself anywhere in a word of bash or zsh.
bool isPlain(char character) {
    constexpr std::string_view marks = "_-./:+,%";
    const bool letter =
        (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
    return letter || (character >= '0' && character <= '9') || marks.find(character) != marks.npos;
}

bool isAscii(char character) {
    return static_cast<unsigned char>(character) < 0x80;
}

bool isBlank(char character) {
    return character == ' ' || character == '\t' || character == '\n';
}

/// Whether `text` begins with something that the shell expands.
bool beginsExpansion(std::string_view text) {
    constexpr std::string_view marks = "_({[@*#?$!-";
    const bool isNamed = text.size() > 1 && text.front() == '$' &&
                         (std::isalnum(static_cast<unsigned char>(text[1])) != 0 ||
                          marks.find(text[1]) != marks.npos);
    return isNamed || text.starts_with('`');
}

/// Reads a line from its beginning. Each step returns the number of bytes read, or 0 if it cannot
/// read on.
class TypedLineReader {
public:
    explicit TypedLineReader(std::string_view breaks) : breaks_(breaks) {}

    std::size_t read(std::string_view rest) {
        switch (open_) {
        case ShellQuote::Single:
            return rest.front() == '\'' ? close() : append(rest.front());
        case ShellQuote::Double:
            return readInDoubleQuotes(rest);
        case ShellQuote::Escapes:
            return readEscaped(rest);
        case ShellQuote::None:
            break;
        }
        return readUnquoted(rest);
    }

    TypedLine take() {
        words_.push_back(word_);
        return {std::move(words_), open_,
                word_.substr(0, open_ == ShellQuote::None ? breakEnd_ : quoteBegin_)};
    }

private:
    std::size_t readUnquoted(std::string_view rest) {
        const char character = rest.front();
        if (isBlank(character))
            return endWord();
        if (character == '\\')
            return 1 + (rest.size() > 1 ? append(rest[1]) : 0);
        if (rest.starts_with("$'"))
            return open(ShellQuote::Escapes, 2);
        if (rest.starts_with("$\""))
            return open(ShellQuote::Double, 2);
        if (character == '\'' || character == '"')
            return open(character == '"' ? ShellQuote::Double : ShellQuote::Single, 1);
        if (beginsExpansion(rest))
            return 0;
        if (const char* home = std::getenv("HOME");
            home != nullptr && !inWord_ && rest.starts_with("~/"))
            word_ = home;
        else
            append(character);
        inWord_ = true;
        if (breaks_.find(character) != breaks_.npos)
            breakEnd_ = word_.size();
        return 1;
    }

    std::size_t readInDoubleQuotes(std::string_view rest) {
        constexpr std::string_view escapable = "$`\"\\";
        if (rest.front() == '"')
            return close();
        if (beginsExpansion(rest))
            return 0;
        if (rest.front() == '\\' && rest.size() > 1 && escapable.find(rest[1]) != escapable.npos)
            return 1 + append(rest[1]);
        return append(rest.front());
    }

    /// Knows only the escape of the backslash: unlike bash, readline takes \' for the end of the
    /// quote.
    std::size_t readEscaped(std::string_view rest) {
        if (rest.front() == '\'')
            return close();
        if (rest.front() == '\\')
            return rest.starts_with("\\\\") ? 1 + append('\\') : 0;
        return append(rest.front());
    }

    std::size_t append(char character) {
        inWord_ = true;
        word_ += character;
        return 1;
    }

    std::size_t open(ShellQuote quote, std::size_t length) {
        inWord_ = true;
        open_ = quote;
        quoteBegin_ = word_.size();
        return length;
    }

    std::size_t close() {
        open_ = ShellQuote::None;
        return 1;
    }

    std::size_t endWord() {
        if (std::exchange(inWord_, false))
            words_.push_back(std::exchange(word_, {}));
        breakEnd_ = 0;
        return 1;
    }

    std::string_view breaks_;
    std::vector<std::string> words_;
    std::string word_;
    bool inWord_ = false;
    ShellQuote open_ = ShellQuote::None;
    std::size_t quoteBegin_ = 0;
    std::size_t breakEnd_ = 0;
};

/// How `character` is written in a word of bash within the quote `open`. "!" is put between two
/// quotes, since double quotes do not keep it from history expansion.
std::string inBash(char character, ShellQuote open) {
    constexpr std::string_view expanded = "$`\"\\";
    std::string escaped = std::string("\\") + character;
    switch (open) {
    case ShellQuote::None:
        return isPlain(character) || !isAscii(character) ? std::string(1, character) : escaped;
    case ShellQuote::Single:
        return character == '\'' || character == '!' ? "'" + escaped + "'"
                                                     : std::string(1, character);
    case ShellQuote::Double:
        if (character == '!')
            return '"' + escaped + '"';
        return expanded.find(character) != expanded.npos ? escaped : std::string(1, character);
    case ShellQuote::Escapes:
        if (character == '\'' || character == '!')
            return "'" + escaped + "$'";
        return character == '\\' ? escaped : std::string(1, character);
    }
    return escaped;
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

std::optional<TypedLine> readTypedLine(std::string_view line, std::string_view breaks) {
    TypedLineReader reader(breaks);
    while (!line.empty()) {
        const std::size_t length = reader.read(line);
        if (length == 0)
            return std::nullopt;
        line.remove_prefix(length);
    }
    return reader.take();
}

std::string bashCompletion(std::string_view text, ShellQuote open) {
    std::string completion;
    for (const char character : text)
        completion += inBash(character, open);
    if (open == ShellQuote::None)
        return completion;
    const char mark = open == ShellQuote::Double ? '"' : '\'';
    return mark + completion + mark;
}

} // namespace refdoc
