#include "SlowText.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "Support.hpp"

namespace fuzz {

namespace {

struct ByteRange {
    unsigned first;
    unsigned last;
};

/// One row of the table "Well-Formed UTF-8 Byte Sequences": a range for each byte in turn.
using Row = std::vector<ByteRange>;

const std::array<Row, 9> kWellFormed{
    Row{{0x00, 0x7F}},
    Row{{0xC2, 0xDF}, {0x80, 0xBF}},
    Row{{0xE0, 0xE0}, {0xA0, 0xBF}, {0x80, 0xBF}},
    Row{{0xE1, 0xEC}, {0x80, 0xBF}, {0x80, 0xBF}},
    Row{{0xED, 0xED}, {0x80, 0x9F}, {0x80, 0xBF}},
    Row{{0xEE, 0xEF}, {0x80, 0xBF}, {0x80, 0xBF}},
    Row{{0xF0, 0xF0}, {0x90, 0xBF}, {0x80, 0xBF}, {0x80, 0xBF}},
    Row{{0xF1, 0xF3}, {0x80, 0xBF}, {0x80, 0xBF}, {0x80, 0xBF}},
    Row{{0xF4, 0xF4}, {0x80, 0x8F}, {0x80, 0xBF}, {0x80, 0xBF}},
};

constexpr char16_t kReplacement = 0xFFFD;

unsigned byteAt(std::string_view bytes, std::size_t index) {
    return static_cast<unsigned char>(bytes[index]);
}

/// How many bytes at the front of `bytes` fit the row.
std::size_t fittingBytes(const Row& row, std::string_view bytes) {
    std::size_t count = 0;
    while (count < row.size() && count < bytes.size() && byteAt(bytes, count) >= row[count].first &&
           byteAt(bytes, count) <= row[count].last)
        ++count;
    return count;
}

/// The bits that a lead byte, and then each continuation byte, gives to its code point.
std::uint32_t codePointOf(std::string_view sequence) {
    constexpr std::array<unsigned, 5> kLeadBits{0, 0x7F, 0x1F, 0x0F, 0x07};
    std::uint32_t codePoint = byteAt(sequence, 0) & kLeadBits[sequence.size()];
    for (std::size_t i = 1; i < sequence.size(); ++i)
        codePoint = codePoint * 64 + (byteAt(sequence, i) - 0x80);
    return codePoint;
}

void appendUtf16(std::u16string& text, std::uint32_t codePoint) {
    if (codePoint >= 0x10000) {
        text += static_cast<char16_t>(0xD800 + (codePoint - 0x10000) / 0x400);
        text += static_cast<char16_t>(0xDC00 + (codePoint - 0x10000) % 0x400);
    } else {
        text += static_cast<char16_t>(codePoint);
    }
}

bool isLead(char16_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool isTrail(char16_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

std::string encodeCodePoint(std::uint32_t codePoint) {
    const auto byte = [](std::uint32_t bits) { return static_cast<char>(bits); };
    const auto continuation = [codePoint](unsigned shift) {
        return static_cast<char>(0x80 + (codePoint >> shift) % 64);
    };
    if (codePoint < 0x80)
        return {byte(codePoint)};
    if (codePoint < 0x800)
        return {byte(0xC0 + (codePoint >> 6)), continuation(0)};
    if (codePoint < 0x10000)
        return {byte(0xE0 + (codePoint >> 12)), continuation(6), continuation(0)};
    return {byte(0xF0 + (codePoint >> 18)), continuation(12), continuation(6), continuation(0)};
}

} // namespace

DecodedText decodeUtf8(std::string_view bytes) {
    DecodedText decoded;
    while (!bytes.empty()) {
        // The rows have no lead byte in common, so one at most fits at all.
        const auto row = std::find_if(kWellFormed.begin(), kWellFormed.end(),
                                      [&](const Row& r) { return fittingBytes(r, bytes) > 0; });
        const std::size_t count = row == kWellFormed.end() ? 0 : fittingBytes(*row, bytes);
        const bool isWhole = count > 0 && count == row->size();
        if (isWhole)
            appendUtf16(decoded.text, codePointOf(bytes.substr(0, count)));
        else
            decoded.text += kReplacement;
        decoded.isWellFormed = decoded.isWellFormed && isWhole;
        bytes.remove_prefix(std::max<std::size_t>(count, 1));
    }
    return decoded;
}

std::u16string replaceLoneSurrogates(std::u16string_view text) {
    std::u16string result(text);
    for (std::size_t i = 0; i < result.size(); ++i) {
        if (isLead(result[i]) && i + 1 < result.size() && isTrail(result[i + 1]))
            ++i;
        else if (isLead(result[i]) || isTrail(result[i]))
            result[i] = kReplacement;
    }
    return result;
}

std::string encodeUtf8(std::u16string_view text) {
    const std::u16string wellFormed = replaceLoneSurrogates(text);
    std::string bytes;
    for (std::size_t i = 0; i < wellFormed.size(); ++i) {
        std::uint32_t codePoint = wellFormed[i];
        if (isLead(wellFormed[i])) {
            ++i;
            codePoint = 0x10000 + (codePoint - 0xD800) * 0x400 + (wellFormed[i] - 0xDC00U);
        }
        bytes += encodeCodePoint(codePoint);
    }
    return bytes;
}

std::u16string widen(std::string_view bytes) {
    std::u16string text;
    for (std::size_t i = 0; i < bytes.size(); ++i)
        text += static_cast<char16_t>(byteAt(bytes, i));
    return text;
}

std::string narrow(std::u16string_view text) {
    std::string bytes;
    for (const char16_t unit : text) {
        require(unit <= 0xFF, "a text that is read byte by byte has no units above 0xFF");
        bytes += static_cast<char>(unit);
    }
    return bytes;
}

} // namespace fuzz
