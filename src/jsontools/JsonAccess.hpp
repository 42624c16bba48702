#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/value.hpp>

#include "reference/docparser/DocParserException.hpp"
#include "reference/docparser/ParsingTools.hpp"

/// Kind-checked access to JSON documents, the only one that the parsers use: a value of the wrong
/// kind, and a required member that is missing, throw `DocParserException`.
namespace reference::docparser {

inline const boost::json::object& getJsonObject(const boost::json::value& value) {
    if (const boost::json::object* object = value.if_object())
        return *object;
    throw DocParserException();
}

/// The UTF-8 bytes of a JSON string, valid as long as the document.
inline std::string_view getJsonText(const boost::json::value& value) {
    if (const boost::json::string* text = value.if_string())
        return {text->data(), text->size()};
    throw DocParserException();
}

/// Null when there is no such member.
inline const boost::json::value* findMember(const boost::json::object& object,
                                            const std::string& key) {
    return object.if_contains(key);
}

inline const boost::json::value& requireMember(const boost::json::value* member) {
    if (member)
        return *member;
    throw DocParserException();
}

inline const boost::json::value& getMember(const boost::json::object& object,
                                           const std::string& key) {
    return requireMember(findMember(object, key));
}

/// The number of `name` in `names`, searched from `first` to the end and then from the beginning;
/// `Count` when it is not there.
template <std::size_t Count>
std::size_t numberOf(std::string_view name, const std::array<const std::string*, Count>& names,
                     std::size_t first) {
    std::size_t number = first;
    for (std::size_t tried = 0; tried < Count; ++tried) {
        if (name == *names[number])
            return number;
        if (++number == Count)
            number = 0;
    }
    return Count;
}

/// The members of these names, in the order of the names, each null when there is no such member.
/// It takes one pass over the object, and about one comparison for each member when the members
/// come in the order of the names.
template <std::size_t Count>
std::array<const boost::json::value*, Count>
findMembers(const boost::json::object& object, const std::array<const std::string*, Count>& names) {
    std::array<const boost::json::value*, Count> members{};
    std::size_t expected = 0;
    for (const boost::json::key_value_pair& member : object) {
        const std::size_t number =
            numberOf({member.key().data(), member.key().size()}, names, expected);
        if (number == Count)
            continue;
        members[number] = &member.value();
        expected = number + 1 == Count ? 0 : number + 1;
    }
    return members;
}

/// The results of `read` for each element of a list, in order.
template <typename Read>
auto readElements(const boost::json::array& elements, Read read) {
    std::vector<std::invoke_result_t<Read, const boost::json::value&>> results;
    results.reserve(elements.size());
    for (const boost::json::value& element : elements)
        results.push_back(read(element));
    return results;
}

/// The results of `read` for each object of the optional list member `key`, in order.
template <typename Read>
auto readObjects(const boost::json::object& object, const std::string& key, Read read) {
    std::vector<std::invoke_result_t<Read, const boost::json::object&>> results;
    if (const boost::json::value* list = findMember(object, key)) {
        results = readElements(
            DocResourceParser::ParsingTools::getJsonArray(*list),
            [&read](const boost::json::value& element) { return read(getJsonObject(element)); });
    }
    return results;
}

/// The texts of a list of strings, in order.
inline std::vector<std::u16string>
readTexts(const boost::json::array& texts,
          DocResourceParser::ParsingTools::StringParsingType type) {
    return readElements(texts, [type](const boost::json::value& text) {
        return DocResourceParser::ParsingTools::getFluString(text, type);
    });
}

} // namespace reference::docparser
