#pragma once

#include <map>
#include <string>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/string.hpp>

#include "environment/PathAndText.hpp"
#include "environment/ReferenceProperty.hpp"
#include "reference/docparser/DocResource.hpp"
#include "reference/docparser/RefItem.hpp"

/// Describes records as JSON with the member names of their format; "htmlid" of an argument has its
/// whole link.
namespace testsupport {

namespace docparser = reference::docparser;
using boost::json::object;

inline boost::json::string describe(const std::u16string& text) {
    return boost::json::string(fl::i18n::to_string(text));
}

inline object describe(const docparser::RefItem& item);
inline object describe(const reference::property::RefItemLookup& lookup);
template <typename T>
boost::json::array describeAll(const std::vector<T>& records);

inline object describe(const docparser::ArgumentInfo& info, object description) {
    description["name"] = describe(info.name);
    description["purpose"] = describe(info.purpose);
    description["value"] = describeAll(info.values);
    if (info.hostValue)
        description["hostValue"] = "not empty";
    return description;
}

inline object describe(const docparser::InputArgument& input) {
    return describe(input.info, {{"htmlid", describe(input.info.href)},
                                 {"syntaxtype", input.syntaxType.toString()},
                                 {"defaultvalue", describe(input.defaultValue)},
                                 {"isNameValuePair", input.isNameValuePair}});
}

inline object describe(const docparser::InputGroup& group) {
    return {{"title", describe(group.title)}, {"inputs", describeAll(group.inputs)}};
}

inline object describe(const docparser::OutputArgument& output) {
    return describe(output.info, {{"htmlid", describe(output.info.href)},
                                  {"syntaxtype", output.syntaxType.toString()}});
}

inline object describe(const docparser::ArgumentWithDefault& argument) {
    return describe(argument.info, {{"htmlid", describe(argument.info.href)},
                                    {"defaultvalue", describe(argument.defaultValue)}});
}

inline object describe(const docparser::ClassPropertyGroup& group) {
    return {{"title", describe(group.title)}, {"classproperty", describeAll(group.properties)}};
}

inline object describe(const docparser::RefEntity& entity) {
    return {{"type", entity.entityType.toString()},
            {"name", describe(entity.name)},
            {"fcntype", entity.functionType.toString()}};
}

inline object describe(const docparser::SyntaxGroup& group) {
    return {{"title", describe(group.title)},
            {"syntaxtype", group.syntaxType.toString()},
            {"syntax", describeAll(group.syntax)}};
}

inline object describe(const docparser::SeeAlsoLink& link) {
    return {{"url", describe(link.url)}, {"name", describe(link.name)}};
}

inline object describe(const docparser::ExampleLink& example) {
    return {{"url", describe(example.url)},
            {"open_command", describe(example.openCommand)},
            {"title", describe(example.title)}};
}

template <typename T>
boost::json::array describeAll(const std::vector<T>& records) {
    boost::json::array descriptions;
    for (const T& record : records)
        descriptions.push_back(describe(record));
    return descriptions;
}

inline object describe(const docparser::RefItem& item) {
    const object thumbnail{{"fileref", describe(item.appThumbnail.fileRef)},
                           {"alt", describe(item.appThumbnail.alt)}};
    return {{"href", describe(item.href)},
            {"packagename", describe(item.packageName)},
            {"refpurpose", describe(item.refPurpose)},
            {"introduced", describe(item.introduced)},
            {"description", describe(item.description)},
            {"deprecationstatus", item.deprecationStatus.toString()},
            {"refentity", describeAll(item.refEntities)},
            {"appthumbnail", thumbnail},
            {"syntaxgroup", describeAll(item.syntaxGroups)},
            {"inputgroup", describeAll(item.inputGroups)},
            {"outputs", describeAll(item.outputs)},
            {"classpropertygroup", describeAll(item.classPropertyGroups)},
            {"seealso", describeAll(item.seeAlso)},
            {"examples", describeAll(item.examples)},
            {"parameters", describeAll(item.parameters)}};
}

inline object describe(const reference::property::RefItemLookup& lookup) {
    return {{"name", describe(lookup.getName())},
            {"refpurpose", describe(lookup.getPurpose())},
            {"href", describe(lookup.getHref())},
            {"type", lookup.getEntityType().toString()},
            {"fcntype", lookup.getFunctionType().toString()},
            {"deprecated", lookup.isDeprecated()}};
}

/// Describes documents by key, and the items of each by their keys.
template <typename T>
object describe(const std::map<std::u16string, docparser::DocResource<T>>& documents) {
    object description;
    for (const auto& [key, document] : documents) {
        object items;
        for (const auto& [name, records] : document.items)
            items[describe(name)] = describeAll(records);
        description[describe(key)] = {{"productName", describe(document.header.getProductName())},
                                      {"baseCode", describe(document.header.getBaseCode())},
                                      {"helpFolder", describe(document.header.getHelpFolder())},
                                      {"helpLocation", describe(document.header.getHelpLocation())},
                                      {"refItems", items}};
    }
    return description;
}

} // namespace testsupport
