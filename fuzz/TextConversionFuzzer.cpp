// Compares the text conversions with those of ICU, which convert a text as a whole.

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

#include <boost/json/string.hpp>
#include <boost/json/value.hpp>
#include <unicode/unistr.h>

#include "Support.hpp"
#include "environment/PathAndText.hpp"
#include "reference/docparser/ParsingTools.hpp"

namespace {

using fuzz::require;
using reference::docparser::DocResourceParser::ParsingTools::getFluString;
using reference::docparser::DocResourceParser::ParsingTools::StringParsingType;

std::u16string decode(std::string_view bytes) {
    const auto size = static_cast<std::int32_t>(bytes.size());
    const icu::UnicodeString text = icu::UnicodeString::fromUTF8({bytes.data(), size});
    return {text.getBuffer(), static_cast<std::size_t>(text.length())};
}

std::string encode(const std::u16string& text) {
    std::string bytes;
    icu::UnicodeString(text.data(), static_cast<std::int32_t>(text.size())).toUTF8String(bytes);
    return bytes;
}

/// A prefix for the input: the conversions work on blocks of 512 and 1024, at whose ends the input
/// must fall. Most inputs have none.
std::size_t choosePadding(fuzz::Choices& choices) {
    const std::size_t blocks = choices.below(32);
    const std::size_t letters = choices.below(256);
    return blocks < 8 ? blocks * 256 + letters : 0;
}

void checkDecoding(const std::string& bytes, const std::u16string& expected) {
    const fl::i18n::codecvt_string_to_ustring lenient("utf8", true);
    require(lenient.convert(bytes.data(), bytes.size()) == expected, "lenient UTF-8 decoding");
    require(fl::i18n::from_utf8(bytes) == expected, "from_utf8");
    const bool isWellFormed = encode(expected) == bytes;
    const fl::i18n::codecvt_string_to_ustring strict("utf8", false);
    try {
        const std::u16string text = strict.convert(bytes.data(), bytes.size());
        require(isWellFormed, "strict decoding refuses ill-formed UTF-8");
        require(text == expected, "strict UTF-8 decoding");
    } catch (const std::range_error&) {
        require(!isWellFormed, "strict decoding takes well-formed UTF-8");
    }
}

void checkWidening(const std::string& bytes) {
    std::u16string expected;
    for (const char byte : bytes)
        expected += static_cast<unsigned char>(byte);
    const fl::i18n::codecvt_ascii_to_ustring ascii;
    require(ascii.convert(bytes.data(), bytes.size()) == expected, "ASCII widening");
    require(getFluString(boost::json::string(bytes), StringParsingType::Ascii) == expected,
            "a JSON text read byte by byte");
}

void checkJsonText(const std::string& bytes, const std::u16string& decoded) {
    const boost::json::value value = boost::json::string(bytes);
    // What is not Ascii is UTF-8.
    for (const int type : {static_cast<int>(StringParsingType::Utf8), 2, -1, 256})
        require(getFluString(value, static_cast<StringParsingType>(type)) == decoded,
                "a JSON text read as UTF-8");
}

void checkEncoding(const std::u16string& text) {
    require(fl::i18n::to_string(text) == encode(text), "UTF-8 encoding");
    require(fl::filesystem::detail::make_native_form(text, true) == decode(encode(text)),
            "a path in native form");
}

/// UTF-16 code units of any kind: two bytes each, the lower one first.
std::u16string unitsOf(std::string_view bytes) {
    std::u16string text;
    for (; bytes.size() >= 2; bytes.remove_prefix(2)) {
        const unsigned low = static_cast<unsigned char>(bytes[0]);
        const unsigned high = static_cast<unsigned char>(bytes[1]);
        text += static_cast<char16_t>(low + high * 256);
    }
    return text;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Choices choices(fuzz::textOf(data, size));
    const std::size_t padding = choosePadding(choices);
    const std::string bytes = std::string(padding, 'x').append(choices.rest());
    const std::u16string decoded = decode(bytes);
    checkDecoding(bytes, decoded);
    checkWidening(bytes);
    checkJsonText(bytes, decoded);
    checkEncoding(decoded);
    checkEncoding(std::u16string(padding, u'x') + unitsOf(choices.rest()));
    return 0;
}
