#include "refdoc/PrettyJson.hpp"

#include <cstddef>
#include <string_view>
#include <utility>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>
#include <fmt/format.h>

namespace refdoc {

namespace {

namespace json = boost::json;

/// A JSON text without the control characters that JSON itself allows: DEL and, in UTF-8, C2 80
/// to C2 9F.
std::string withoutControls(std::string_view text) {
    constexpr unsigned char del = 0x7F;
    std::string result;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto byte = static_cast<unsigned char>(text[at]);
        const auto next = static_cast<unsigned char>(at + 1 < text.size() ? text[at + 1] : '\0');
        const bool twoByteControl = byte == 0xC2 && next <= 0x9F;
        if (twoByteControl)
            ++at;
        if (twoByteControl || byte == del)
            result += fmt::format("\\u{:04x}", twoByteControl ? next : byte);
        else
            result += text[at];
    }
    return result;
}

class PrettyPrinter {
public:
    void print(const json::value& value) {
        if (value.is_object() && !value.get_object().empty())
            printMembers(value.get_object());
        else if (value.is_array() && !value.get_array().empty())
            printElements(value.get_array());
        else
            text_ += withoutControls(json::serialize(value));
    }

    std::string take() { return std::move(text_); }

private:
    void printMembers(const json::object& object) {
        open('{');
        for (const json::key_value_pair& member : object) {
            nextLine();
            text_ += withoutControls(json::serialize(member.key())) + ": ";
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
    std::size_t depth_ = 0;
    bool first_ = true;
};

} // namespace

std::string prettyJson(const json::value& value) {
    PrettyPrinter printer;
    printer.print(value);
    return printer.take() + '\n';
}

std::string compactJson(const json::value& value) {
    return withoutControls(json::serialize(value));
}

} // namespace refdoc
