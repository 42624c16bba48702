#pragma once

#include <cstddef>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>

#include "support/JsonMutations.hpp"

/// Random damage to sound JSON documents.
namespace testsupport {

using Random = std::mt19937;

inline std::string numbered(std::string prefix, std::size_t number) {
    return prefix.append(std::to_string(number));
}

inline std::size_t below(std::size_t count, Random& random) {
    return random() % count;
}

/// Removes a value, or replaces it by another one of the document or of any kind.
inline boost::json::value mutated(boost::json::value document, Random& random) {
    static const boost::json::array others =
        boost::json::parse(R"([null, false, 7, 0.5, "", "1", "B", [], {}, [1], {"name": "n"}])")
            .as_array();
    const std::vector<std::string> pointers = allPointers(document);
    if (pointers.empty())
        return document;
    const std::string& pointer = pointers[below(pointers.size(), random)];
    if (below(3, random) == 0 && !isListElement(pointer))
        return withoutMember(document, pointer);
    const boost::json::value replacement =
        below(3, random) == 0 ? document.at_pointer(pointers[below(pointers.size(), random)])
                              : others[below(others.size(), random)];
    return withValue(document, pointer, replacement);
}

/// Changes, removes or adds bytes.
inline std::string damaged(std::string text, Random& random) {
    static constexpr std::string_view bytes("{}[]\",:\\u1\x80\xC3\0 \n", 16);
    const std::size_t at = below(text.size(), random);
    const char byte = bytes[below(bytes.size(), random)];
    switch (below(4, random)) {
    case 0:
        text[at] = byte;
        break;
    case 1:
        text.erase(at, 1 + below(3, random));
        break;
    case 2:
        text.insert(at, 1, byte);
        break;
    default:
        text.resize(at);
    }
    return text;
}

inline std::string mutatedText(const boost::json::value& sound, Random& random) {
    boost::json::value document = sound;
    for (std::size_t count = below(4, random); count > 0; --count)
        document = mutated(std::move(document), random);
    std::string text = boost::json::serialize(document);
    if (below(4, random) == 0 && !text.empty())
        text = damaged(std::move(text), random);
    return text;
}

} // namespace testsupport
