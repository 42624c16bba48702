#include "refdoc/check/rules/JsonSyntax.hpp"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#include <boost/json/basic_parser_impl.hpp>
#include <fmt/format.h>
#include <unicode/utf16.h>

#include "refdoc/format/BlindHandler.hpp"
#include "refdoc/text/Text.hpp"

namespace refdoc {

namespace {

namespace json = boost::json;

using BlindParser = json::basic_parser<BlindHandler>;

/// The number of bytes before the first one that no JSON text could have there. The parser does not
/// say where it fails, only in which piece: the text is parsed in large pieces, and the one that
/// fails again byte by byte.
std::size_t soundLength(std::string_view text) {
    constexpr std::size_t piece = 1 << 16;
    const auto lengthUpTo = [text](std::size_t start, std::size_t step) {
        BlindParser parser{json::parse_options()};
        json::error_code failure;
        std::size_t at = parser.write_some(true, text.data(), start, failure);
        while (at < text.size()) {
            const std::size_t size = std::min(step, text.size() - at);
            if (parser.write_some(true, text.data() + at, size, failure) < size || failure)
                break;
            at += size;
        }
        return at;
    };
    return lengthUpTo(lengthUpTo(0, piece), 1);
}

/// The name of another kind of content; empty for text that may be meant as JSON.
std::string_view foreignContent(std::string_view text, bool isEntry) {
    if (text.find_first_not_of(" \t\r\n") == text.npos)
        return "the text is empty";
    if (text.starts_with("\xEF\xBB\xBF"))
        return "the text begins with a byte-order mark";
    if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF") ||
        text.substr(0, 2).find('\0') != text.npos)
        return "the text is UTF-16 or UTF-32, not UTF-8";
    if (text.starts_with("PK\3\4") || text.starts_with("PK\5\6"))
        return isEntry ? "the content is a zip package: packages within packages are not read"
                       : "the content is a zip package: its name must end with .zip";
    if (text.starts_with("\x1F\x8B"))
        return "the content is compressed";
    return {};
}

/// The number of bytes of a UTF-8 character, given its first byte.
std::size_t characterSize(char first) {
    const auto byte = static_cast<unsigned char>(first);
    return byte < 0xC0 ? 1 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
}

/// Where malformed UTF-8 begins, if that is why the text is sound only up to `at`: the parser at
/// first accepts such a character.
std::optional<std::size_t> brokenCharacter(std::string_view text, std::size_t at) {
    constexpr std::size_t mostBytes = 4;
    std::size_t begin = at - std::min(at, mostBytes);
    while (begin > 0 && begin < at && continuesCharacter(text[begin]))
        ++begin;
    while (begin <= at && begin < text.size()) {
        const std::string_view character = text.substr(begin, characterSize(text[begin]));
        if (toUtf8(fromUtf8(character)) != character)
            return begin;
        begin += character.size();
    }
    return std::nullopt;
}

/// Whether the byte at `at` lies within a string.
bool isQuoted(std::string_view text, std::size_t at) {
    bool isQuoted = false;
    for (std::size_t i = 0; i < at; ++i) {
        if (text[i] == '"')
            isQuoted = !isQuoted;
        else if (text[i] == '\\' && isQuoted)
            ++i;
    }
    return isQuoted;
}

/// Whether the escape of a leading surrogate ends at `at`, or just before a backslash there.
bool followsLeadingSurrogate(std::string_view text, std::size_t at) {
    constexpr std::size_t escapeSize = 6;
    const std::size_t end = at > 0 && text[at - 1] == '\\' ? at - 1 : at;
    if (end < escapeSize)
        return false;
    const std::string_view escape = text.substr(end - escapeSize, escapeSize);
    const std::size_t before = text.find_last_not_of('\\', end - escapeSize);
    const bool isEscape = (end - escapeSize - before) % 2 == 1; // not of a written backslash
    return isEscape && escape.starts_with("\\u") && (escape[2] == 'd' || escape[2] == 'D') &&
           std::string_view("89abAB").find(escape[3]) != std::string_view::npos;
}

std::string_view causeInQuotes(std::string_view text, std::size_t at,
                               const json::error_code& failure) {
    if (static_cast<unsigned char>(text[at]) < 0x20)
        return R"(a line break or control character within a string: write it as \n, \t or \u, )"
               "or add the missing closing quote";
    if (failure == json::error::illegal_trailing_surrogate || followsLeadingSurrogate(text, at))
        return R"(half of a surrogate pair: \uD800 to \uDFFF come in pairs)";
    return R"(an unknown escape: write a backslash as \\)";
}

bool isWordByte(char byte) {
    return std::isalnum(static_cast<unsigned char>(byte)) != 0 || byte == '_' || byte == '$';
}

/// Whether a value can end, or begin, with the byte.
bool endsValue(char byte) {
    return std::string_view("\"]}").find(byte) != std::string_view::npos || isWordByte(byte);
}
bool beginsValue(char byte) {
    return std::string_view("\"[{-").find(byte) != std::string_view::npos || isWordByte(byte);
}

/// Names a character beyond ASCII, which may look like one of JSON's own.
std::string foreignCharacter(std::string_view text, std::size_t at) {
    const std::string_view bytes = text.substr(at, characterSize(text[at]));
    std::size_t next = 0;
    UChar32 character = 0;
    const std::u16string units = fromUtf8(bytes);
    U16_NEXT(units.data(), next, units.size(), character);
    return fmt::format("{} (U+{:04X}) stands outside of a string: JSON's own signs and blanks are "
                       "ASCII",
                       inQuotes(bytes), static_cast<std::uint32_t>(character));
}

std::string causeBetweenQuotes(std::string_view text, std::size_t at) {
    const char here = text[at];
    const std::size_t last = at == 0 ? text.npos : text.find_last_not_of(" \t\r\n", at - 1);
    const char before = last == text.npos ? '[' : text[last];
    const bool isWithinWord = last + 1 == at && isWordByte(before) && isWordByte(here);
    if ((here & 0x80) != 0)
        return foreignCharacter(text, at);
    if (here == '/' || here == '#')
        return "JSON has no comments";
    if (here == '\'')
        return "strings and names need double quotes, not single ones";
    if ((here == ']' || here == '}') && before == ',')
        return "a comma before a closing bracket";
    if (before == '{')
        return "the name of a member, in double quotes, is missing";
    if (here == ',')
        return "a value is missing before the comma";
    if (here == '=')
        return "a colon belongs between a name and its value";
    if (before == '"' && isWordByte(here))
        return R"(a comma or colon is missing, or a quote within a string is not written as \")";
    if (endsValue(before) && beginsValue(here) && !isWithinWord)
        return "a comma or colon is missing";
    if (std::isdigit(static_cast<unsigned char>(here)) != 0 || here == '+' || here == '.')
        return "numbers are not written like this";
    if (isWordByte(here))
        return "a word other than true, false and null: strings need double quotes";
    return "syntax error";
}

std::string syntaxCause(std::string_view text, std::size_t at, const json::error_code& failure) {
    if (failure == json::error::extra_data)
        return "there is more after its end";
    if (at >= text.size())
        return "the text ends too early";
    return isQuoted(text, at) ? std::string(causeInQuotes(text, at, failure))
                              : causeBetweenQuotes(text, at);
}

/// Where and why the text is not JSON.
std::pair<std::size_t, std::string> explain(std::string_view text, bool isEntry,
                                            const json::error_code& failure) {
    const std::size_t at = soundLength(text);
    const std::string_view foreign = foreignContent(text, isEntry);
    if (!foreign.empty())
        return {at, std::string(foreign)};
    if (failure == json::error::too_deep)
        return {at, "the text is nested deeper than 32"};
    if (const auto broken = brokenCharacter(text, at))
        return {*broken, "not JSON: a byte that is not UTF-8"};
    return {at, fmt::format("not JSON: {}", syntaxCause(text, at, failure))};
}

void addTooManyValues(std::string_view text, Violations& violations) {
    violations.add({.fault = Fault::Unreadable,
                    .message = fmt::format(
                        "not checked: the text has more than {} values, too many for its size",
                        mostValues(text.size()))});
}

void addNotJson(std::string_view text, const json::error_code& failure, Violations& violations) {
    auto [at, cause] = explain(text, violations.wholeText() == Loss::Entry, failure);
    violations.add({.fault = Fault::NotJson,
                    .message = std::move(cause),
                    .loss = violations.wholeText(),
                    .offset = at});
}

void addUnknownMembers(std::size_t count, Violations& violations) {
    if (count > 0)
        violations.add({.fault = Fault::UnreadMember,
                        .message = fmt::format("objects with more than {} unknown members: {} "
                                               "further ones are not checked",
                                               BoundedTree::kMostUnknownMembers, count),
                        .pointer = "",
                        .level = Level::Note});
}

} // namespace

std::optional<JsonTree> parseText(std::string_view text, const Format& format,
                                  Violations& violations) {
    try {
        BoundedTree parsed = parseBounded(text, format.names());
        if (parsed.hasTooManyValues)
            addTooManyValues(text, violations);
        else if (parsed.failure)
            addNotJson(text, parsed.failure, violations);
        else
            addUnknownMembers(parsed.unknownMembers, violations);
        return std::move(parsed.tree);
    } catch (const std::bad_alloc&) {
        violations.add({.fault = Fault::Unreadable,
                        .message = "the text does not fit in memory",
                        .loss = violations.wholeText()});
        return std::nullopt;
    }
}

} // namespace refdoc
