#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <unicode/ubrk.h>

namespace refdoc {

/// The number of terminal columns that `text` takes: two for wide characters, none for combining
/// marks, format and control characters.
std::size_t displayWidth(std::u16string_view text);

/// `text` with each tab expanded to blanks up to the next multiple of eight columns.
std::u16string expandTabs(std::u16string_view text);

/// How far to indent continuation lines of syntax: to the first argument, unless that begins too
/// far right.
std::size_t syntaxHang(std::u16string_view line);

/// A range of code units in a text.
struct TextRange {
    std::size_t begin;
    std::size_t end;

    bool operator==(const TextRange&) const = default;
};

/// Breaks text into lines by the rules of its script, which for example put no closing punctuation
/// at the start of a line. ASCII words, such as option names and paths, are broken only if a line
/// cannot hold them, and never where the script does not allow it: such a line is too long.
class LineBreaker {
public:
    LineBreaker();

    /// The lines of `text`, a paragraph without line ends. Trailing blanks belong to no line.
    std::vector<TextRange> breakLines(std::u16string_view text, std::size_t firstWidth,
                                      std::size_t otherWidth);

    /// The lines of a line of syntax. They end between arguments, unless that makes a line too
    /// long.
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
