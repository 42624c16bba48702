#include "refdoc/pages/ItemJson.hpp"

#include <string>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/string.hpp>

#include "refdoc/text/Json.hpp"

namespace refdoc {

namespace {

namespace json = boost::json;
using namespace reference::docparser;

/// The conversions of all parts of an item; as members of one class they can call each other.
struct RecordJson {
    static json::string of(const std::u16string& text) { return toJson(text); }

    template <typename Element>
    static json::array of(const std::vector<Element>& elements) {
        json::array array;
        array.reserve(elements.size());
        for (const Element& element : elements)
            array.emplace_back(of(element));
        return array;
    }

    template <typename Definition>
    static json::string of(reference::property::TextEnumeration<Definition> value) {
        return json::string(value.toString());
    }

    static json::object of(const RefEntity& entity) {
        return {{"name", of(entity.name)},
                {"entityType", of(entity.entityType)},
                {"functionType", of(entity.functionType)}};
    }

    static json::object of(const AppThumbnail& thumbnail) {
        return {{"fileRef", of(thumbnail.fileRef)}, {"alt", of(thumbnail.alt)}};
    }

    static json::object of(const SyntaxGroup& group) {
        return {{"title", of(group.title)},
                {"syntaxType", of(group.syntaxType)},
                {"syntax", of(group.syntax)}};
    }

    static json::object of(const ArgumentInfo& info) {
        return {{"name", of(info.name)},
                {"purpose", of(info.purpose)},
                {"values", of(info.values)},
                {"href", of(info.href)}};
    }

    static json::object of(const InputArgument& input) {
        json::object object = of(input.info);
        object["syntaxType"] = of(input.syntaxType);
        object["defaultValue"] = of(input.defaultValue);
        object["isNameValuePair"] = input.isNameValuePair;
        return object;
    }

    static json::object of(const InputGroup& group) {
        return {{"title", of(group.title)}, {"inputs", of(group.inputs)}};
    }

    static json::object of(const OutputArgument& output) {
        json::object object = of(output.info);
        object["syntaxType"] = of(output.syntaxType);
        return object;
    }

    static json::object of(const ArgumentWithDefault& argument) {
        json::object object = of(argument.info);
        object["defaultValue"] = of(argument.defaultValue);
        return object;
    }

    static json::object of(const ClassPropertyGroup& group) {
        return {{"title", of(group.title)}, {"properties", of(group.properties)}};
    }

    static json::object of(const SeeAlsoLink& link) {
        return {{"url", of(link.url)}, {"name", of(link.name)}};
    }

    static json::object of(const ExampleLink& link) {
        return {{"url", of(link.url)},
                {"openCommand", of(link.openCommand)},
                {"title", of(link.title)}};
    }
};

} // namespace

json::object toJson(const reference::property::HeaderInfo& header) {
    return {{"productName", toJson(header.getProductName())},
            {"baseCode", toJson(header.getBaseCode())},
            {"helpFolder", toJson(header.getHelpFolder())},
            {"helpLocation", toJson(header.getHelpLocation())}};
}

json::object toJson(const RefItem& item) {
    return {{"href", RecordJson::of(item.href)},
            {"refEntities", RecordJson::of(item.refEntities)},
            {"packageName", RecordJson::of(item.packageName)},
            {"refPurpose", RecordJson::of(item.refPurpose)},
            {"introduced", RecordJson::of(item.introduced)},
            {"description", RecordJson::of(item.description)},
            {"appThumbnail", RecordJson::of(item.appThumbnail)},
            {"deprecationStatus", RecordJson::of(item.deprecationStatus)},
            {"syntaxGroups", RecordJson::of(item.syntaxGroups)},
            {"inputGroups", RecordJson::of(item.inputGroups)},
            {"outputs", RecordJson::of(item.outputs)},
            {"classPropertyGroups", RecordJson::of(item.classPropertyGroups)},
            {"seeAlso", RecordJson::of(item.seeAlso)},
            {"examples", RecordJson::of(item.examples)},
            {"parameters", RecordJson::of(item.parameters)}};
}

} // namespace refdoc
