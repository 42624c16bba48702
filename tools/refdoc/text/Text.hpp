#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace refdoc {

/// Lines in UTF-8, without their ends.
using Lines = std::vector<std::string>;

/// A lone surrogate becomes U+FFFD.
std::string toUtf8(std::u16string_view text);

/// Whether a byte of UTF-8 is not the first one of its character.
constexpr bool continuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

/// Malformed input becomes U+FFFD.
std::u16string fromUtf8(std::string_view text);

/// Whether a terminal shows `character` in its place and leaves all others in theirs: no control
/// character, no end of a line or paragraph, no control of the writing direction, no surrogate.
bool isPrintable(char32_t character);

/// `text` as one line that is safe to print: white space other than blanks becomes a blank, any
/// other character that is not printable becomes U+FFFD.
std::u16string printable(std::u16string_view text);

/// The same for UTF-8 text.
std::string printableUtf8(std::string_view text);

/// The lines of `text` without their ends, which may be LF, CR LF or CR.
std::vector<std::u16string_view> splitLines(std::u16string_view text);

/// `text` as it compares when letter case counts for nothing; a text of 2^29 units and more as it
/// is.
std::u16string foldCase(std::u16string_view text);

bool equalsIgnoringCase(std::u16string_view left, std::u16string_view right);

/// Case-insensitive order; texts that differ in case only stand in code unit order.
bool precedesInList(std::u16string_view left, std::u16string_view right);

} // namespace refdoc
