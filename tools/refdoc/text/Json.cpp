#include "refdoc/text/Json.hpp"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>
#include <fmt/format.h>
#include <unicode/utf16.h>

#include "refdoc/text/Text.hpp"

namespace refdoc {

namespace {

namespace json = boost::json;

/// A JSON text with unprintable characters escaped, though JSON itself allows them. All of these
/// lie in the Basic Multilingual Plane.
std::string escaped(std::string_view text) {
    constexpr char lastPrintable = 0x7E;
    if (std::all_of(text.begin(), text.end(),
                    [](char byte) { return byte >= ' ' && byte <= lastPrintable; }))
        return std::string(text);
    std::u16string result;
    const std::u16string wide = fromUtf8(text);
    for (std::size_t at = 0, begin = 0; at < wide.size(); begin = at) {
        UChar32 character;
        U16_NEXT(wide.data(), at, wide.size(), character);
        if (isPrintable(static_cast<char32_t>(character)))
            result.append(wide, begin, at - begin);
        else
            result += fromUtf8(fmt::format("\\u{:04x}", static_cast<unsigned>(character)));
    }
    return toUtf8(result);
}

} // namespace

json::string toJson(const std::u16string& text) {
    return json::string(toUtf8(text));
}

json::string toJson(std::string_view text) {
    return toJson(fromUtf8(text));
}

void JsonPrinter::open(char bracket) {
    beginElement();
    text_ += bracket;
    ++depth_;
    isFirst_ = true;
}

void JsonPrinter::close(char bracket) {
    --depth_;
    if (!isFirst_)
        newLine();
    isFirst_ = false;
    text_ += bracket;
}

void JsonPrinter::key(std::string_view name) {
    beginElement();
    text_ += escaped(json::serialize(json::string_view(name))) + ": ";
    afterKey_ = true;
}

void JsonPrinter::value(const json::value& value) {
    if (const json::object* object = value.if_object())
        return members(*object);
    if (const json::array* array = value.if_array())
        return elements(*array);
    beginElement();
    text_ += escaped(json::serialize(value));
}

std::string JsonPrinter::take() {
    return std::exchange(text_, {});
}

void JsonPrinter::members(const json::object& object) {
    open('{');
    for (const json::key_value_pair& member : object) {
        key(member.key());
        value(member.value());
    }
    close('}');
}

void JsonPrinter::elements(const json::array& array) {
    open('[');
    for (const json::value& element : array)
        value(element);
    close(']');
}

/// Separates the next element from what precedes it.
void JsonPrinter::beginElement() {
    if (std::exchange(afterKey_, false) || depth_ == 0)
        return;
    if (!std::exchange(isFirst_, false))
        text_ += ',';
    newLine();
}

void JsonPrinter::newLine() {
    text_ += '\n' + std::string(2 * depth_, ' ');
}

std::string prettyJson(const json::value& value) {
    JsonPrinter printer;
    printer.value(value);
    return printer.take() + '\n';
}

std::string compactJson(const json::value& value) {
    return escaped(json::serialize(value));
}

} // namespace refdoc
