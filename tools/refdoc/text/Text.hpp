#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace refdoc {

/// Lines in UTF-8, without their ends.
using Lines = std::vector<std::string>;

/// A lone surrogate becomes U+FFFD.
std::string toUtf8(std::u16string_view text);

/// Whether a byte of UTF-8 continues a character.
constexpr bool continuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

/// Malformed input becomes U+FFFD.
std::u16string fromUtf8(std::string_view text);

/// Whether a terminal shows `character` in its place and leaves all others in theirs: it is not a
/// control character, the end of a line or paragraph, a control of the writing direction, or a
/// surrogate.
bool isPrintable(char32_t character);

/// `text` as one line that is safe to print: white space becomes a blank, and any other unprintable
/// character U+FFFD.
std::u16string printable(std::u16string_view text);

/// The same for UTF-8 text.
std::string printableUtf8(std::string_view text);

/// The lines of `text` without their ends, which may be LF, CR LF or CR.
std::vector<std::u16string_view> splitLines(std::u16string_view text);

/// `text` folded for comparison without regard to case; returned unchanged if it has 2^29 units or
/// more.
std::u16string foldCase(std::u16string_view text);

bool equalsIgnoringCase(std::u16string_view left, std::u16string_view right);

/// Orders texts without regard to case; texts that differ only in case are ordered by code units.
bool precedesInList(std::u16string_view left, std::u16string_view right);

} // namespace refdoc
