#pragma once

#include <algorithm>
#include <exception>
#include <optional>
#include <string>
#include <string_view>

#include "environment/PathAndText.hpp"

/// How texts become parts of records. All readers share it, so that they differ in JSON alone.
namespace bench {

/// One code unit per byte.
inline std::u16string widen(std::string_view text) {
    static const fl::i18n::codecvt_ascii_to_ustring kAscii;
    return text.empty() ? std::u16string() : kAscii.convert(text.data(), text.size());
}

/// UTF-8, most of which is plain ASCII.
inline std::u16string decode(std::string_view text) {
    unsigned char largest = 0;
    for (const char byte : text)
        largest = std::max(largest, static_cast<unsigned char>(byte - 1));
    return largest < 0x7E || text.empty() ? widen(text) : fl::i18n::from_utf8(text);
}

template <typename Enumeration>
Enumeration toEnum(std::optional<std::string_view> text) {
    if (!text)
        return Enumeration::getDefaultValue();
    try {
        return Enumeration::stringToEnum(*text);
    } catch (const std::exception&) {
        return Enumeration::getDefaultValue();
    }
}

/// The texts of a lookup, as its document has them.
struct LookupTexts {
    std::string_view name, purpose, href;
    std::optional<std::string_view> type, functionType;
    bool isDeprecated;
};

inline std::u16string join(const std::u16string& first, std::u16string_view second,
                           const std::u16string& third) {
    std::u16string text;
    text.reserve(first.size() + second.size() + third.size());
    return text.append(first).append(second).append(third);
}

} // namespace bench
