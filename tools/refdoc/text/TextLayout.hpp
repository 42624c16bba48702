#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <unicode/ubrk.h>

namespace refdoc {

/// The terminal columns that `text` takes: two for wide characters, none for marks that combine
/// with the character before, for format and for control characters.
std::size_t displayWidth(std::u16string_view text);

/// `text` with each tab replaced by blanks up to the next multiple of eight columns.
std::u16string expandTabs(std::u16string_view text);

/// How far to indent what does not fit on a line of syntax: to its first argument, if that does not
/// begin too far right.
std::size_t syntaxHang(std::u16string_view line);

/// A part of a text, from code unit `begin` up to `end`.
struct TextRange {
    std::size_t begin;
    std::size_t end;

    bool operator==(const TextRange&) const = default;
};

/// Breaks text into lines as its script asks for (no closing punctuation at a line's start). Words
/// written in ASCII, such as option names and paths, are broken only when a line cannot hold them
/// whole, and never where the script does not allow it: such a line is longer than asked for.
class LineBreaker {
public:
    LineBreaker();

    /// The lines of `text`, a paragraph without line ends. Blanks at the end of a line belong to
    /// none.
    std::vector<TextRange> breakLines(std::u16string_view text, std::size_t firstWidth,
                                      std::size_t otherWidth);

    /// The lines of a line of syntax. They end between arguments, unless some line is too long
    /// then.
    std::vector<TextRange> breakSyntax(std::u16string_view line, std::size_t firstWidth,
                                       std::size_t otherWidth);

private:
    struct Close {
        void operator()(UBreakIterator* iterator) const noexcept { ubrk_close(iterator); }
    };

    std::vector<std::size_t> breakPositions(std::u16string_view text);

    std::unique_ptr<UBreakIterator, Close> iterator_;
};

} // namespace refdoc
