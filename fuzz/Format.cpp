#include "Format.hpp"

#include <algorithm>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

namespace fuzz {

namespace {

namespace json = boost::json;

enum class Kind { Text, Texts, Object, Objects, InputGroups };

struct Member;
using Members = std::vector<Member>;

/// A member whose kind counts; enumerations and members that are not listed may hold anything.
struct Member {
    const char* name;
    bool isRequired;
    Kind kind = Kind::Text;
    const Members* members = nullptr; ///< of the object, or of each in the list
};

constexpr bool kRequired = true;
constexpr bool kOptional = false;

const Members kArgument{{"htmlid", kOptional},
                        {"name", kRequired},
                        {"purpose", kRequired},
                        {"value", kOptional, Kind::Texts}};
const Members kArgumentWithDefault{{"htmlid", kOptional},
                                   {"name", kRequired},
                                   {"purpose", kRequired},
                                   {"value", kOptional, Kind::Texts},
                                   {"defaultvalue", kOptional}};
const Members kInputGroup{{"title", kRequired},
                          {"inputs", kOptional, Kind::Objects, &kArgumentWithDefault}};
const Members kNameValuePairs{{"namevaluepairs", kRequired, Kind::Objects, &kInputGroup}};
const Members kProperty{{"name", kRequired},
                        {"purpose", kRequired},
                        {"value", kOptional, Kind::Texts},
                        {"defaultvalue", kOptional}};
const Members kPropertyGroup{{"title", kOptional},
                             {"classproperty", kRequired, Kind::Objects, &kProperty}};
const Members kEntity{{"name", kRequired}};
const Members kThumbnail{{"fileref", kRequired}, {"alt", kRequired}};
const Members kSyntaxGroup{{"title", kRequired}, {"syntax", kRequired, Kind::Texts}};
const Members kLink{{"url", kRequired}, {"name", kRequired}};
const Members kExample{{"url", kRequired}, {"title", kRequired}, {"open_command", kOptional}};

const Members kReferenceItem{{"href", kRequired},
                             {"refpurpose", kRequired},
                             {"refentity", kOptional, Kind::Objects, &kEntity},
                             {"packagename", kOptional},
                             {"introduced", kOptional},
                             {"description", kOptional},
                             {"appthumbnail", kOptional, Kind::Object, &kThumbnail},
                             {"syntaxgroup", kOptional, Kind::Objects, &kSyntaxGroup},
                             {"inputgroup", kOptional, Kind::InputGroups},
                             {"outputs", kOptional, Kind::Objects, &kArgument},
                             {"classpropertygroup", kOptional, Kind::Objects, &kPropertyGroup},
                             {"seealso", kOptional, Kind::Objects, &kLink},
                             {"examples", kOptional, Kind::Objects, &kExample},
                             {"parameters", kOptional, Kind::Objects, &kArgumentWithDefault}};
const Members kLookup{{"name", kRequired}, {"refpurpose", kRequired}, {"href", kRequired}};

Members documentOf(const Members& item) {
    return {{"productName", kRequired},
            {"baseCode", kRequired},
            {"helpFolder", kRequired},
            {"helpLocation", kRequired},
            {"refItems", kRequired, Kind::Objects, &item}};
}

bool fits(const json::value& value, const Members& members);

bool isText(const json::value& value) {
    return value.is_string();
}

bool isInputGroup(const json::value& value) {
    const bool isHolder = value.is_object() && value.get_object().contains("namevaluepairs");
    return fits(value, isHolder ? kNameValuePairs : kInputGroup);
}

template <typename Fits>
bool isListOf(const json::value& value, Fits elementFits) {
    return value.is_array() &&
           std::all_of(value.get_array().begin(), value.get_array().end(), elementFits);
}

bool fits(const json::value& value, const Member& member) {
    const auto fitsMembers = [&member](const json::value& v) { return fits(v, *member.members); };
    switch (member.kind) {
    case Kind::Text:
        return isText(value);
    case Kind::Texts:
        return isListOf(value, isText);
    case Kind::Object:
        return fitsMembers(value);
    case Kind::Objects:
        return isListOf(value, fitsMembers);
    case Kind::InputGroups:
        return isListOf(value, isInputGroup);
    }
    return false;
}

bool fits(const json::value& value, const Members& members) {
    if (!value.is_object())
        return false;
    return std::all_of(members.begin(), members.end(), [&value](const Member& member) {
        const json::value* found = value.get_object().if_contains(member.name);
        return found == nullptr ? !member.isRequired : fits(*found, member);
    });
}

bool isResource(const json::value& text, const Members& document) {
    const Members packages{{"supportPackages", kOptional, Kind::Objects, &document}};
    return fits(text, document) && fits(text, packages);
}

} // namespace

bool isLookupResource(const json::value& text) {
    static const Members kDocument = documentOf(kLookup);
    return isResource(text, kDocument);
}

bool isReferenceResource(const json::value& text) {
    static const Members kDocument = documentOf(kReferenceItem);
    return isResource(text, kDocument);
}

} // namespace fuzz
