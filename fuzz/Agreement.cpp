#include "Agreement.hpp"

#include <array>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/value.hpp>

#include "Support.hpp"
#include "environment/ReferenceProperty.hpp"

namespace fuzz {

namespace {

namespace json = boost::json;
namespace property = reference::property;

/// What an enumeration member means: its text when that is known, else the default's.
template <typename Definition>
std::string_view meaningOf(std::string_view text) {
    for (const std::string_view known : Definition::texts)
        if (known == text)
            return known;
    return Definition::texts.front();
}

using Meaning = std::string_view (*)(std::string_view);

const std::map<std::string_view, Meaning> kEnumerations{
    {"type", &meaningOf<property::RefEntityTypeDefinition>},
    {"fcntype", &meaningOf<property::FunctionTypeDefinition>},
    {"deprecationstatus", &meaningOf<property::DeprecationStatusDefinition>},
    {"syntaxtype", &meaningOf<property::SyntaxTypeDefinition>}};

bool agrees(const json::value& written, const json::value& original);

/// The groups of an "inputgroup" list without the holders of name-value pairs, each with a note of
/// whether it was held; a group without inputs does not show it.
json::array withoutHolders(const json::array& list) {
    json::array groups;
    const auto add = [&groups](const json::value& group, bool isHeld) {
        const json::value* inputs = group.as_object().if_contains("inputs");
        const bool showsIt = inputs != nullptr && !inputs->as_array().empty();
        groups.push_back({{"held", isHeld && showsIt}, {"group", group}});
    };
    for (const json::value& element : list) {
        if (const json::value* pairs = element.as_object().if_contains("namevaluepairs")) {
            for (const json::value& group : pairs->as_array())
                add(group, true);
        } else {
            add(element, false);
        }
    }
    return groups;
}

/// What stands for a member that a document leaves out.
bool isBlank(const json::value& written) {
    if (const json::object* object = written.if_object()) {
        for (const auto& [name, member] : *object)
            if (!isBlank(member))
                return false;
        return true;
    }
    return written == json::value(json::string()) || written == json::value(json::array());
}

bool enumerationAgrees(Meaning meaning, const json::value& written, const json::value* original) {
    const json::string* text = original == nullptr ? nullptr : original->if_string();
    const std::string_view bytes =
        text == nullptr ? std::string_view() : std::string_view(text->data(), text->size());
    return written == json::value(meaning(bytes));
}

bool memberAgrees(std::string_view name, const json::value& written, const json::value* original) {
    if (const auto found = kEnumerations.find(name); found != kEnumerations.end())
        return enumerationAgrees(found->second, written, original);
    if (original == nullptr)
        return isBlank(written);
    if (name == "deprecated")
        return true; // a mark, whose value does not count
    if (name == "inputgroup")
        return agrees(withoutHolders(written.as_array()), withoutHolders(original->as_array()));
    return agrees(written, *original);
}

bool listsAgree(const json::array& written, const json::array& original) {
    if (written.size() != original.size())
        return false;
    for (std::size_t i = 0; i < written.size(); ++i)
        if (!agrees(written[i], original[i]))
            return false;
    return true;
}

bool objectsAgree(const json::object& written, const json::object& original) {
    for (const auto& [name, member] : written)
        if (!memberAgrees(name, member, original.if_contains(name)))
            return false;
    return true;
}

bool agrees(const json::value& written, const json::value& original) {
    if (written.kind() != original.kind())
        return false;
    if (written.is_array())
        return listsAgree(written.get_array(), original.get_array());
    if (written.is_object())
        return objectsAgree(written.get_object(), original.get_object());
    return written == original;
}

/// A lookup is deprecated when the member is there, whatever its value.
bool areDeprecatedAlike(const json::array& written, const json::array& original) {
    for (std::size_t i = 0; i < written.size(); ++i)
        if (written[i].as_object().contains("deprecated") !=
            original[i].as_object().contains("deprecated"))
            return false;
    return true;
}

/// The items by the text of the member that groups them, each group in document order.
std::map<std::string, json::array> groupsOf(const json::array& items, std::string_view itemKey) {
    std::map<std::string, json::array> groups;
    for (const json::value& item : items)
        groups[std::string(item.as_object().at(itemKey).as_string())].push_back(item);
    return groups;
}

} // namespace

void requireAgreement(const json::object& written, const json::object& original,
                      std::string_view itemKey) {
    for (const char* name : {"productName", "baseCode", "helpFolder", "helpLocation"})
        require(agrees(written.at(name), original.at(name)), name);
    const auto groups = groupsOf(written.at("refItems").as_array(), itemKey);
    const auto originals = groupsOf(original.at("refItems").as_array(), itemKey);
    require(groups.size() == originals.size(), "as many groups of items as there are");
    for (const auto& [key, items] : groups) {
        const auto found = originals.find(key);
        require(found != originals.end() && listsAgree(items, found->second),
                "the items of a key are what stands there");
        require(itemKey != kLookupKey || areDeprecatedAlike(items, found->second),
                "a lookup is deprecated when it has the member");
    }
}

} // namespace fuzz
