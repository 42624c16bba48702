#include "refdoc/text/Text.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include <unicode/uchar.h>
#include <unicode/ustring.h>
#include <unicode/utf16.h>

#include "environment/PathAndText.hpp"

namespace refdoc {

namespace {

constexpr char16_t kReplacement = u'\uFFFD';

bool isLineOrTabCharacter(UChar32 character) {
    return (character >= u'\t' && character <= u'\r') || character == 0x85 || character == 0x2028 ||
           character == 0x2029;
}

UChar32 printableFor(UChar32 character) {
    if (isLineOrTabCharacter(character))
        return u' ';
    return isPrintable(static_cast<char32_t>(character)) ? character : kReplacement;
}

bool isPlain(char16_t unit) {
    return unit >= u' ' && unit < 0x7F;
}

std::int32_t compareIgnoringCase(std::u16string_view left, std::u16string_view right) {
    UErrorCode status = U_ZERO_ERROR;
    return u_strCaseCompare(left.data(), static_cast<std::int32_t>(left.size()), right.data(),
                            static_cast<std::int32_t>(right.size()), U_FOLD_CASE_DEFAULT, &status);
}

} // namespace

std::string toUtf8(std::u16string_view text) {
    return fl::i18n::to_string(std::u16string(text));
}

std::u16string fromUtf8(std::string_view text) {
    return fl::i18n::from_utf8(text);
}

bool isPrintable(char32_t character) {
    constexpr std::uint32_t unprintable = U_GC_CC_MASK | U_GC_CS_MASK | U_GC_ZL_MASK | U_GC_ZP_MASK;
    const auto point = static_cast<UChar32>(character);
    return (U_GET_GC_MASK(point) & unprintable) == 0 &&
           !u_hasBinaryProperty(point, UCHAR_BIDI_CONTROL);
}

std::u16string printable(std::u16string_view text) {
    std::u16string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        if (isPlain(text[at])) {
            result += text[at++];
            continue;
        }
        UChar32 character;
        U16_NEXT(text.data(), at, text.size(), character);
        character = printableFor(character);
        if (!U_IS_BMP(character))
            result += U16_LEAD(character);
        result += U_IS_BMP(character) ? static_cast<char16_t>(character) : U16_TRAIL(character);
    }
    return result;
}

std::string printableUtf8(std::string_view text) {
    return toUtf8(printable(fromUtf8(text)));
}

std::vector<std::u16string_view> splitLines(std::u16string_view text) {
    std::vector<std::u16string_view> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(u"\r\n"), text.size());
        lines.push_back(text.substr(0, end));
        const std::size_t endLength = text.substr(end, 2) == u"\r\n" ? 2 : 1;
        text.remove_prefix(std::min(end + endLength, text.size()));
    }
    return lines;
}

std::u16string foldCase(std::u16string_view text) {
    constexpr std::size_t mostUnitsPerUnit = 3;
    if (text.size() >= std::size_t{1} << 29)
        return std::u16string(text);
    std::u16string folded(mostUnitsPerUnit * text.size(), u'\0');
    UErrorCode status = U_ZERO_ERROR;
    const std::int32_t length =
        u_strFoldCase(folded.data(), static_cast<std::int32_t>(folded.size()), text.data(),
                      static_cast<std::int32_t>(text.size()), U_FOLD_CASE_DEFAULT, &status);
    folded.resize(static_cast<std::size_t>(length));
    return folded;
}

bool equalsIgnoringCase(std::u16string_view left, std::u16string_view right) {
    return compareIgnoringCase(left, right) == 0;
}

bool precedesInList(std::u16string_view left, std::u16string_view right) {
    const std::int32_t order = compareIgnoringCase(left, right);
    return order != 0 ? order < 0 : left < right;
}

} // namespace refdoc
