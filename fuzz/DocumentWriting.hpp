#pragma once

#include <string>
#include <utility>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/string.hpp>

#include "SlowText.hpp"
#include "Support.hpp"
#include "environment/ReferenceProperty.hpp"
#include "reference/docparser/DocResource.hpp"
#include "reference/docparser/RefItem.hpp"

/// Writes records back as the JSON that they can have been read from, and requires on the way what
/// must hold between the parts of a record.
namespace fuzz {

namespace docparser = reference::docparser;
namespace json = boost::json;

/// A text that was read as UTF-8.
inline json::string decoded(const std::u16string& text) {
    return json::string(encodeUtf8(text));
}

/// A text that was read byte by byte.
inline json::string widened(const std::u16string& text) {
    return json::string(narrow(text));
}

template <typename Record, typename Write>
json::array writeAll(const std::vector<Record>& records, Write write) {
    json::array elements;
    for (const Record& record : records)
        elements.push_back(write(record));
    return elements;
}

inline json::object write(const reference::property::RefItemLookup& lookup,
                          const std::u16string& key) {
    require(lookup.getName() == key, "a lookup stands under its own name");
    json::object item{{"name", decoded(lookup.getName())},
                      {"refpurpose", decoded(lookup.getPurpose())},
                      {"href", widened(lookup.getHref())},
                      {"type", lookup.getEntityType().toString()},
                      {"fcntype", lookup.getFunctionType().toString()}};
    if (lookup.isDeprecated())
        item["deprecated"] = true;
    return item;
}

/// Writes the parts of one item, whose href and whose entities say how the others are to be read.
class ItemWriter {
public:
    explicit ItemWriter(const docparser::RefItem& item) : item_(item) {
        for (const docparser::RefEntity& entity : item.refEntities)
            hasApp_ = hasApp_ || entity.entityType == reference::property::RefEntityType::App;
    }

    json::object write() const;

private:
    json::object writeArgument(const docparser::ArgumentInfo& info, const json::string& name,
                               const std::u16string& linkBegin) const {
        require(info.href.starts_with(linkBegin), "a link begins with its item's href");
        require(!info.hostValue, "a handle is empty");
        return {{"name", name},
                {"htmlid", widened(info.href.substr(linkBegin.size()))},
                {"purpose", decoded(info.purpose)},
                {"value", writeAll(info.values, decoded)}};
    }

    json::string givenName(const std::u16string& name) const {
        return hasApp_ ? decoded(name) : widened(name);
    }

    json::object writeInput(const docparser::InputArgument& input) const {
        json::object element =
            writeArgument(input.info, givenName(input.info.name), item_.href + u'#');
        element["syntaxtype"] = input.syntaxType.toString();
        element["defaultvalue"] = decoded(input.defaultValue);
        return element;
    }

    json::object writeGroup(const docparser::InputGroup& group) const {
        const json::object element{
            {"title", decoded(group.title)},
            {"inputs", writeAll(group.inputs, [this](const auto& i) { return writeInput(i); })}};
        const bool isPairs = !group.inputs.empty() && group.inputs.front().isNameValuePair;
        for (const docparser::InputArgument& input : group.inputs)
            require(input.isNameValuePair == isPairs, "all inputs of a group are of one kind");
        return isPairs ? json::object{{"namevaluepairs", json::array{element}}} : element;
    }

    json::object writeOutput(const docparser::OutputArgument& output) const {
        json::object element =
            writeArgument(output.info, decoded(output.info.name), item_.href + u'#');
        element["syntaxtype"] = output.syntaxType.toString();
        return element;
    }

    json::object writeParameter(const docparser::ArgumentWithDefault& parameter) const {
        json::object element =
            writeArgument(parameter.info, decoded(parameter.info.name), item_.href + u'#');
        element["defaultvalue"] = decoded(parameter.defaultValue);
        return element;
    }

    json::object writeProperty(const docparser::ArgumentWithDefault& property) const {
        const docparser::ArgumentInfo& info = property.info;
        require(info.href == item_.href + u"#prop_" + info.name, "the link of a property");
        json::object element = writeArgument(info, givenName(info.name), info.href);
        element.erase("htmlid");
        element["defaultvalue"] = decoded(property.defaultValue);
        return element;
    }

    json::object writePropertyGroup(const docparser::ClassPropertyGroup& group) const {
        return {{"title", decoded(group.title)},
                {"classproperty",
                 writeAll(group.properties, [this](const auto& p) { return writeProperty(p); })}};
    }

    const docparser::RefItem& item_;
    bool hasApp_ = false;
};

inline json::object writeEntity(const docparser::RefEntity& entity) {
    return {{"type", entity.entityType.toString()},
            {"name", decoded(entity.name)},
            {"fcntype", entity.functionType.toString()}};
}

inline json::object writeSyntaxGroup(const docparser::SyntaxGroup& group) {
    return {{"title", decoded(group.title)},
            {"syntaxtype", group.syntaxType.toString()},
            {"syntax", writeAll(group.syntax, widened)}};
}

inline json::object writeLink(const docparser::SeeAlsoLink& link) {
    return {{"url", widened(link.url)}, {"name", decoded(link.name)}};
}

inline json::object writeExample(const docparser::ExampleLink& example) {
    return {{"url", widened(example.url)},
            {"open_command", widened(example.openCommand)},
            {"title", decoded(example.title)}};
}

inline json::object ItemWriter::write() const {
    return {
        {"href", widened(item_.href)},
        {"refpurpose", decoded(item_.refPurpose)},
        {"refentity", writeAll(item_.refEntities, writeEntity)},
        {"packagename", widened(item_.packageName)},
        {"introduced", widened(item_.introduced)},
        {"description", decoded(item_.description)},
        {"appthumbnail", json::object{{"fileref", widened(item_.appThumbnail.fileRef)},
                                      {"alt", decoded(item_.appThumbnail.alt)}}},
        {"deprecationstatus", item_.deprecationStatus.toString()},
        {"syntaxgroup", writeAll(item_.syntaxGroups, writeSyntaxGroup)},
        {"inputgroup",
         writeAll(item_.inputGroups, [this](const auto& g) { return writeGroup(g); })},
        {"outputs", writeAll(item_.outputs, [this](const auto& o) { return writeOutput(o); })},
        {"classpropertygroup", writeAll(item_.classPropertyGroups,
                                        [this](const auto& g) { return writePropertyGroup(g); })},
        {"seealso", writeAll(item_.seeAlso, writeLink)},
        {"examples", writeAll(item_.examples, writeExample)},
        {"parameters",
         writeAll(item_.parameters, [this](const auto& p) { return writeParameter(p); })}};
}

inline json::object write(const docparser::RefItem& item, const std::u16string& key) {
    require(item.href == key, "an item stands under its own href");
    return ItemWriter(item).write();
}

template <typename T>
json::object write(const docparser::DocResource<T>& document) {
    json::array items;
    for (const auto& [key, records] : document.items) {
        require(!records.empty(), "no list of items is empty");
        for (const T& record : records)
            items.push_back(write(record, key));
    }
    return {{"productName", decoded(document.header.getProductName())},
            {"baseCode", widened(document.header.getBaseCode())},
            {"helpFolder", widened(document.header.getHelpFolder())},
            {"helpLocation", widened(document.header.getHelpLocation())},
            {"refItems", std::move(items)}};
}

} // namespace fuzz
