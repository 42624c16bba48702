#include "environment/PathAndText.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string_view>

#include <unicode/ustring.h>
#include <unicode/utf16.h>

namespace fl::i18n {

namespace {

constexpr UChar32 kReplacement = 0xFFFD;

/// Texts up to this many bytes are decoded on the stack.
constexpr std::size_t kShortText = 1024;

[[noreturn]] void throwMalformed() {
    throw std::range_error("text is not well-formed UTF-8");
}

// Over all units, without an early exit, for that is what the compilers vectorise.
bool isAscii(std::u16string_view text) {
    std::uint16_t bits = 0;
    for (const char16_t unit : text)
        bits = static_cast<std::uint16_t>(bits | unit);
    return bits < 0x80;
}

/// Decodes into `units`, which has room for one unit per byte, and returns how many there are.
std::size_t decodeUtf8(std::string_view text, bool replaceMalformed, char16_t* units) {
    const auto capacity = static_cast<std::int32_t>(text.size());
    std::int32_t unitCount = 0;
    UErrorCode status = U_ZERO_ERROR;
    if (replaceMalformed)
        u_strFromUTF8WithSub(units, capacity, &unitCount, text.data(), capacity, kReplacement,
                             nullptr, &status);
    else
        u_strFromUTF8(units, capacity, &unitCount, text.data(), capacity, &status);
    if (U_FAILURE(status))
        throwMalformed();
    return static_cast<std::size_t>(unitCount);
}

std::u16string decode(std::string_view text, bool replaceMalformed) {
    const std::size_t length = text.size();
    if (length > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()))
        throw std::length_error("text is too long to be decoded");
    if (length <= kShortText) {
        std::array<char16_t, kShortText> units;
        return {units.data(), decodeUtf8(text, replaceMalformed, units.data())};
    }
    // Not std::make_unique_for_overwrite, which libc++ has from version 16 on.
    const std::unique_ptr<char16_t[]> units(new char16_t[length]);
    return {units.get(), decodeUtf8(text, replaceMalformed, units.get())};
}

} // namespace

codecvt_to_ustring::~codecvt_to_ustring() = default;

std::u16string codecvt_ascii_to_ustring::convert(const char* text, std::size_t length) const {
    // Made from a range of bytes, the string is not filled before, and the compilers widen packed.
    const auto* bytes = reinterpret_cast<const unsigned char*>(text);
    return {bytes, bytes + length};
}

codecvt_string_to_ustring::codecvt_string_to_ustring(std::string_view encoding,
                                                     bool replaceMalformed)
    : replaceMalformed_(replaceMalformed) {
    if (encoding != "utf8")
        throw std::invalid_argument("unknown text encoding");
}

std::u16string codecvt_string_to_ustring::convert(const char* text, std::size_t length) const {
    return decode({text, length}, replaceMalformed_);
}

std::u16string from_utf8(std::string_view text) {
    return decode(text, true);
}

std::string to_string(const std::u16string& text) {
    if (isAscii(text))
        return {text.begin(), text.end()};
    constexpr std::size_t kMaximumBytesPerUnit = 3;
    constexpr std::size_t kChunk = 512;
    std::array<char, kChunk * kMaximumBytesPerUnit> bytes;
    std::string result;
    result.reserve(text.size());
    for (std::size_t begin = 0; begin < text.size();) {
        std::size_t count = std::min(kChunk, text.size() - begin);
        // A surrogate pair must not fall into two chunks.
        if (begin + count < text.size() && U16_IS_LEAD(text[begin + count - 1]))
            --count;
        std::int32_t byteCount = 0;
        UErrorCode status = U_ZERO_ERROR;
        u_strToUTF8WithSub(bytes.data(), static_cast<std::int32_t>(bytes.size()), &byteCount,
                           text.data() + begin, static_cast<std::int32_t>(count), kReplacement,
                           nullptr, &status);
        result.append(bytes.data(), static_cast<std::size_t>(byteCount));
        begin += count;
    }
    return result;
}

} // namespace fl::i18n
