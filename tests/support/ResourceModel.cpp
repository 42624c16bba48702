#include "support/ResourceModel.hpp"

#include <algorithm>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <boost/json/array.hpp>

#include "environment/ReferenceProperty.hpp"
#include "reference/docparser/RefItem.hpp"

namespace testsupport {

namespace {

namespace json = boost::json;
namespace property = reference::property;

enum class Kind {
    Utf8,
    Bytes,        ///< a text read byte by byte
    Name,         ///< UTF-8 in the items of apps, else read byte by byte
    Link,         ///< what follows the item's href
    PropertyLink, ///< made of the item's href and the name
    Enumeration,  ///< may hold anything
    Mark,         ///< only whether it is there counts
    Utf8List,
    ByteList,
    Object,
    Objects,
    InputGroups,
    Items
};

struct Member;
using Members = std::vector<Member>;

struct Member {
    const char* name;
    bool isRequired;
    Kind kind;
    const Members* members = nullptr;          ///< of the object, or of each in the list
    std::span<const std::string_view> known{}; ///< texts of an enumeration, the default first
};

constexpr bool kRequired = true;
constexpr bool kOptional = false;

template <typename Definition>
Member enumeration(const char* name) {
    return {name, kOptional, Kind::Enumeration, nullptr, Definition::texts};
}

const Member kName{"name", kRequired, Kind::Utf8};
const Member kPurpose{"purpose", kRequired, Kind::Utf8};
const Member kRefPurpose{"refpurpose", kRequired, Kind::Utf8};
const Member kTitle{"title", kRequired, Kind::Utf8};
const Member kValues{"value", kOptional, Kind::Utf8List};
const Member kDefault{"defaultvalue", kOptional, Kind::Utf8};
const Member kGivenName{"name", kRequired, Kind::Name};
const Member kLink{"htmlid", kOptional, Kind::Link};
const Member kHref{"href", kRequired, Kind::Bytes};
const Member kUrl{"url", kRequired, Kind::Bytes};
const Member kEntityType = enumeration<property::RefEntityTypeDefinition>("type");
const Member kFunctionType = enumeration<property::FunctionTypeDefinition>("fcntype");
const Member kSyntaxType = enumeration<property::SyntaxTypeDefinition>("syntaxtype");

const Members kInput{kLink, kGivenName, kPurpose, kValues, kSyntaxType, kDefault};
const Members kInputGroup{kTitle, {"inputs", kOptional, Kind::Objects, &kInput}};
const Members kOutput{kLink, kName, kPurpose, kValues, kSyntaxType};
const Members kParameter{kLink, kName, kPurpose, kValues, kDefault};
const Members kProperty{
    kGivenName, kPurpose, kValues, kDefault, {"htmlid", kOptional, Kind::PropertyLink}};
const Members kPropertyGroup{{"title", kOptional, Kind::Utf8},
                             {"classproperty", kRequired, Kind::Objects, &kProperty}};
const Members kEntity{kName, kEntityType, kFunctionType};
const Members kThumbnail{{"fileref", kRequired, Kind::Bytes}, {"alt", kRequired, Kind::Utf8}};
const Members kSyntaxGroup{kTitle, kSyntaxType, {"syntax", kRequired, Kind::ByteList}};
const Members kSeeAlso{kUrl, kName};
const Members kExample{kUrl, kTitle, {"open_command", kOptional, Kind::Bytes}};

const Members kReferenceItem{
    kHref,
    kRefPurpose,
    {"packagename", kOptional, Kind::Bytes},
    {"introduced", kOptional, Kind::Bytes},
    {"description", kOptional, Kind::Utf8},
    enumeration<property::DeprecationStatusDefinition>("deprecationstatus"),
    {"refentity", kOptional, Kind::Objects, &kEntity},
    {"appthumbnail", kOptional, Kind::Object, &kThumbnail},
    {"syntaxgroup", kOptional, Kind::Objects, &kSyntaxGroup},
    {"inputgroup", kOptional, Kind::InputGroups},
    {"outputs", kOptional, Kind::Objects, &kOutput},
    {"classpropertygroup", kOptional, Kind::Objects, &kPropertyGroup},
    {"seealso", kOptional, Kind::Objects, &kSeeAlso},
    {"examples", kOptional, Kind::Objects, &kExample},
    {"parameters", kOptional, Kind::Objects, &kParameter}};
const Members kLookup{kName,       kRefPurpose,   kHref,
                      kEntityType, kFunctionType, {"deprecated", kOptional, Kind::Mark}};

struct Broken {};

/// The parts of an item that decide how its other members are read.
struct Item {
    std::string href;
    bool hasApp = false;
};

const json::array& listOf(const json::value& value) {
    return value.is_array() ? value.get_array() : throw Broken();
}

const json::value* find(const json::value& value, const char* name) {
    return value.is_object() ? value.get_object().if_contains(name) : throw Broken();
}

std::string textOf(const json::value& value) {
    return value.is_string() ? std::string(value.get_string()) : throw Broken();
}

/// Turns each byte into the character of the same number.
std::string widened(const std::string& bytes) {
    std::string text;
    for (const char byte : bytes) {
        const auto number = static_cast<unsigned char>(byte);
        if (number < 0x80)
            text += byte;
        else
            text.append(
                {static_cast<char>(0xC0 | number >> 6), static_cast<char>(0x80 | (number & 0x3F))});
    }
    return text;
}

Item itemOf(const json::value& value) {
    const auto isApp = [](const json::value& entity) {
        const json::value* type = find(entity, "type");
        return type != nullptr && *type == "app";
    };
    Item item;
    if (const json::value* href = find(value, "href"))
        item.href = widened(textOf(*href));
    if (const json::value* entities = find(value, "refentity"))
        item.hasApp = std::any_of(listOf(*entities).begin(), listOf(*entities).end(), isApp);
    return item;
}

json::object read(const json::value& value, const Members& members, const Item& item);

json::object readInputGroup(const json::value& value, bool isPairs, const Item& item) {
    json::object group = read(value, kInputGroup, item);
    for (json::value& input : group.at("inputs").as_array())
        input.as_object()["isNameValuePair"] = isPairs;
    return group;
}

/// The groups of name-value pairs replace the object that holds them.
json::array readInputGroups(const json::value& list, const Item& item) {
    json::array groups;
    for (const json::value& element : listOf(list)) {
        if (const json::value* pairs = find(element, "namevaluepairs"))
            for (const json::value& group : listOf(*pairs))
                groups.push_back(readInputGroup(group, true, item));
        else
            groups.push_back(readInputGroup(element, false, item));
    }
    return groups;
}

template <typename Read>
json::array readEach(const json::value& list, Read readElement) {
    json::array elements;
    for (const json::value& element : listOf(list))
        elements.push_back(readElement(element));
    return elements;
}

json::string meaningOf(const json::value& value, std::span<const std::string_view> known) {
    const auto found = std::find_if(known.begin(), known.end(),
                                    [&value](auto text) { return value == json::string(text); });
    return json::string(found == known.end() ? known.front() : *found);
}

/// The value of a member that a document leaves out.
json::value blank(const Member& member) {
    if (member.kind == Kind::Object) {
        json::object object;
        for (const Member& inner : *member.members)
            object[inner.name] = blank(inner);
        return object;
    }
    return member.kind >= Kind::Utf8List ? json::value(json::array()) : json::value("");
}

json::value read(const json::value& value, const Member& member, const Item& item) {
    switch (member.kind) {
    case Kind::Bytes:
        return json::string(widened(textOf(value)));
    case Kind::Name:
        return json::string(item.hasApp ? textOf(value) : widened(textOf(value)));
    case Kind::Link:
        return json::string(item.href + '#' + widened(textOf(value)));
    case Kind::Enumeration:
        return meaningOf(value, member.known);
    case Kind::Utf8List:
        return readEach(value, [](const auto& text) { return json::string(textOf(text)); });
    case Kind::ByteList:
        return readEach(value,
                        [](const auto& text) { return json::string(widened(textOf(text))); });
    case Kind::Object:
        return read(value, *member.members, item);
    case Kind::Objects:
        return readEach(value, [&](const auto& v) { return read(v, *member.members, item); });
    case Kind::InputGroups:
        return readInputGroups(value, item);
    case Kind::Items:
        return readEach(value, [&](const auto& v) { return read(v, *member.members, itemOf(v)); });
    default:
        return json::string(textOf(value));
    }
}

json::object read(const json::value& value, const Members& members, const Item& item) {
    json::object result;
    for (const Member& member : members) {
        const json::value* const found = find(value, member.name);
        if (found == nullptr && member.isRequired)
            throw Broken();
        if (member.kind == Kind::Mark)
            result[member.name] = found != nullptr;
        else if (member.kind == Kind::PropertyLink)
            result[member.name] =
                json::string(item.href + "#prop_" + textOf(result.at(kGivenName.name)));
        else
            result[member.name] = read(found == nullptr ? blank(member) : *found, member, item);
    }
    return result;
}

/// A document whose items are grouped by one of their members.
json::object readDocument(const json::value& value, const Member& items, const char* key) {
    json::object document = read(value,
                                 {{"productName", kRequired, Kind::Utf8},
                                  {"baseCode", kRequired, Kind::Bytes},
                                  {"helpFolder", kRequired, Kind::Bytes},
                                  {"helpLocation", kRequired, Kind::Bytes},
                                  items},
                                 {});
    json::object groups;
    for (const json::value& read : document.at("refItems").as_array()) {
        json::value& group = groups[read.at(key).as_string()];
        if (group.is_null())
            group = json::array();
        group.as_array().push_back(read);
    }
    document["refItems"] = std::move(groups);
    return document;
}

std::optional<json::object> readResource(const json::value& text, const Member& items,
                                         const char* key) {
    json::object documents;
    const auto add = [&](const json::value& value, const char* keyOfDocument) {
        json::object document = readDocument(value, items, key);
        const json::string name = document.at(keyOfDocument).as_string();
        documents.emplace(name, std::move(document)); // the first of several with one key stays
    };
    try {
        add(text, "helpFolder");
        if (const json::value* packages = find(text, "supportPackages"))
            for (const json::value& package : listOf(*packages))
                add(package, "baseCode");
    } catch (const Broken&) {
        return std::nullopt;
    }
    return documents;
}

} // namespace

template <>
std::optional<json::object> expectedResource<property::RefItemLookup>(const json::value& text) {
    return readResource(text, {"refItems", kRequired, Kind::Objects, &kLookup}, "name");
}

template <>
std::optional<json::object>
expectedResource<reference::docparser::RefItem>(const json::value& text) {
    return readResource(text, {"refItems", kRequired, Kind::Items, &kReferenceItem}, "href");
}

} // namespace testsupport
