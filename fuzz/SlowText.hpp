#pragma once

#include <string>
#include <string_view>

/// Conversions between the Unicode forms written from the tables of the standard, one code point
/// at a time and with no regard to speed: what the library's are measured against.
namespace fuzz {

struct DecodedText {
    std::u16string text; ///< with one U+FFFD for each maximal subpart of what is ill-formed
    bool isWellFormed = true;
};

DecodedText decodeUtf8(std::string_view bytes);

/// Lone surrogates become U+FFFD.
std::string encodeUtf8(std::u16string_view text);
std::u16string replaceLoneSurrogates(std::u16string_view text);

/// One code unit for each byte.
std::u16string widen(std::string_view bytes);

/// The inverse of `widen`; any unit above 0xFF ends the process.
std::string narrow(std::u16string_view text);

} // namespace fuzz
