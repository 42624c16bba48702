#include "reference/docparser/ParsingTools.hpp"

#include <algorithm>
#include <string>
#include <string_view>

#include "jsontools/JsonAccess.hpp"
#include "settings/Constants.hpp"

namespace reference::docparser::DocResourceParser::ParsingTools {
namespace {

// Whether every byte lies in 0x01..0x7E: less one they stay below 0x7E, and 0x00 wraps around. A
// maximum over all bytes, without an early exit, is what the compilers vectorise.
bool isPlainText(std::string_view text) {
    unsigned char largest = 0;
    for (const char byte : text)
        largest = std::max(largest, static_cast<unsigned char>(byte - 1));
    return largest < 0x7E;
}

} // namespace

std::u16string getFluString(const boost::json::value& value, StringParsingType type) {
    const std::string_view text = getJsonText(value);
    if (text.empty())
        return {};
    if (type == StringParsingType::Ascii || isPlainText(text))
        return asciiConverter.convert(text.data(), text.size());
    return utf8Converter.convert(text.data(), text.size());
}

std::u16string getFluString(const boost::json::object& object, const std::string& key,
                            StringParsingType type) {
    return getFluString(getMember(object, key), type);
}

std::u16string getFluStringWithFallback(const boost::json::object& object, const std::string& key,
                                        StringParsingType type) {
    const boost::json::value* member = findMember(object, key);
    return member ? getFluString(*member, type) : std::u16string();
}

const boost::json::array& getJsonArray(const boost::json::value& value) {
    if (const boost::json::array* array = value.if_array())
        return *array;
    throw DocParserException();
}

const boost::json::array& getJsonArray(const boost::json::value& value, const std::string& key) {
    return getJsonArray(getMember(getJsonObject(value), key));
}

} // namespace reference::docparser::DocResourceParser::ParsingTools
