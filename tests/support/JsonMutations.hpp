#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <boost/json/object.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>

/// Ways to damage a sound JSON document at one place, named by a JSON pointer.
namespace testsupport {

inline void collectPointers(const boost::json::value& value, const std::string& pointer,
                            std::vector<std::string>& pointers) {
    if (!pointer.empty())
        pointers.push_back(pointer);
    if (const auto* object = value.if_object()) {
        for (const auto& [key, member] : *object)
            collectPointers(member, pointer + '/' + std::string(key), pointers);
    } else if (const auto* array = value.if_array()) {
        for (std::size_t i = 0; i < array->size(); ++i)
            collectPointers((*array)[i], pointer + '/' + std::to_string(i), pointers);
    }
}

/// Every member and every list element of a document, at any depth.
inline std::vector<std::string> allPointers(const boost::json::value& document) {
    std::vector<std::string> pointers;
    collectPointers(document, "", pointers);
    return pointers;
}

inline bool isListElement(std::string_view pointer) {
    const std::string_view last = pointer.substr(pointer.rfind('/') + 1);
    return last.find_first_not_of("0123456789") == last.npos;
}

inline boost::json::value withoutMember(boost::json::value document, const std::string& pointer) {
    const std::size_t slash = pointer.rfind('/');
    boost::json::value& parent = document.at_pointer(pointer.substr(0, slash));
    if (parent.as_object().erase(pointer.substr(slash + 1)) != 1)
        throw std::invalid_argument("no such member: " + pointer);
    return document;
}

inline boost::json::value withValue(boost::json::value document, std::string_view pointer,
                                    const boost::json::value& replacement) {
    document.at_pointer(pointer) = replacement;
    return document;
}

/// One value of each JSON kind that `value` is not of.
inline std::vector<boost::json::value> valuesOfOtherKinds(const boost::json::value& value) {
    std::vector<boost::json::value> others;
    const auto candidates = boost::json::parse(R"([null, true, 7, 0.5, "text", [], {}])");
    for (const boost::json::value& candidate : candidates.as_array()) {
        if (candidate.kind() != value.kind())
            others.push_back(candidate);
    }
    return others;
}

} // namespace testsupport
