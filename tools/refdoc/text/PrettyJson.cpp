#include "refdoc/text/PrettyJson.hpp"

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

/// A JSON text in which characters that JSON itself allows, but that are not printable, are
/// escaped. All of them lie in the Basic Multilingual Plane.
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

class PrettyPrinter {
public:
    explicit PrettyPrinter(std::size_t depth) : depth_(depth) {}

    void print(const json::value& value) {
        if (value.is_object() && !value.get_object().empty())
            printMembers(value.get_object());
        else if (value.is_array() && !value.get_array().empty())
            printElements(value.get_array());
        else
            text_ += escaped(json::serialize(value));
    }

    std::string take() { return std::move(text_); }

private:
    void printMembers(const json::object& object) {
        open('{');
        for (const json::key_value_pair& member : object) {
            nextLine();
            text_ += escaped(json::serialize(member.key())) + ": ";
            print(member.value());
        }
        close('}');
    }

    void printElements(const json::array& array) {
        open('[');
        for (const json::value& element : array) {
            nextLine();
            print(element);
        }
        close(']');
    }

    void open(char bracket) {
        text_ += bracket;
        ++depth_;
        first_ = true;
    }

    void close(char bracket) {
        --depth_;
        first_ = true;
        nextLine();
        text_ += bracket;
    }

    void nextLine() {
        if (!first_)
            text_ += ',';
        first_ = false;
        text_ += '\n' + std::string(2 * depth_, ' ');
    }

    std::string text_;
    std::size_t depth_;
    bool first_ = true;
};

} // namespace

std::string prettyJson(const json::value& value) {
    return prettyJson(value, 0) + '\n';
}

std::string prettyJson(const json::value& value, std::size_t depth) {
    PrettyPrinter printer(depth);
    printer.print(value);
    return printer.take();
}

std::string compactJson(const json::value& value) {
    return escaped(json::serialize(value));
}

} // namespace refdoc
