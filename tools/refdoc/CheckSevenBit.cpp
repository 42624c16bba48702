#include "refdoc/CheckSevenBit.hpp"

#include <algorithm>
#include <set>
#include <string>
#include <string_view>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <fmt/format.h>

#include "refdoc/CheckText.hpp"
#include "refdoc/JsonPositions.hpp"

namespace refdoc {

namespace {

namespace json = boost::json;
using Names = std::set<std::string_view>;

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char byte) { return (byte & 0x80) == 0; });
}

bool documentsApp(const json::object& item) {
    const json::value* entities = item.if_contains("refentity");
    if (entities == nullptr)
        return false;
    const json::array& list = entities->as_array();
    return std::any_of(list.begin(), list.end(), [](const json::value& entity) {
        const json::value* type = entity.as_object().if_contains("type");
        return type != nullptr && *type == "app";
    });
}

/// The members whose own members, or whose elements' members, are read.
const Names& containers() {
    static const Names names{"appthumbnail", "syntaxgroup", "inputgroup",         "namevaluepairs",
                             "inputs",       "outputs",     "classpropertygroup", "classproperty",
                             "seealso",      "examples",    "parameters"};
    return names;
}

/// Goes through the part of an item that is a list or object called `name`.
class SevenBitCheck {
public:
    SevenBitCheck(bool namesAreUtf8, FindingList& findings)
        : namesAreUtf8_(namesAreUtf8), findings_(findings) {}

    void checkObject(const json::object& object, std::string_view name,
                     const std::string& pointer) {
        const bool onlyPairs = name == "inputgroup" && object.contains("namevaluepairs");
        for (const json::key_value_pair& member : object)
            if (!onlyPairs || member.key() == "namevaluepairs")
                checkMember(member.key(), member.value(), name,
                            pointer + pointerStep(member.key()));
    }

private:
    bool isSevenBit(std::string_view member, std::string_view parent) const {
        static const Names names{"href",    "packagename",  "introduced", "url",
                                 "fileref", "open_command", "htmlid"};
        const bool isArgumentName =
            member == "name" && (parent == "inputs" || parent == "classproperty");
        return names.contains(member) || (isArgumentName && !namesAreUtf8_);
    }

    void checkMember(std::string_view name, const json::value& value, std::string_view parent,
                     const std::string& pointer) {
        if (value.is_string() && isSevenBit(name, parent))
            checkTextAt(value.get_string(), name, pointer);
        else if (value.is_object() && containers().contains(name))
            checkObject(value.get_object(), name, pointer);
        else if (value.is_array() && (containers().contains(name) || name == "syntax"))
            for (std::size_t i = 0; i < value.get_array().size(); ++i)
                checkElement(value.get_array()[i], name, fmt::format("{}/{}", pointer, i));
    }

    void checkElement(const json::value& element, std::string_view list,
                      const std::string& pointer) {
        if (const json::object* object = element.if_object())
            checkObject(*object, list, pointer);
        else if (list == "syntax" && element.is_string())
            checkTextAt(element.get_string(), list, pointer);
    }

    void checkTextAt(std::string_view text, std::string_view name, const std::string& pointer) {
        if (!isAscii(text))
            findings_.add(Fault::GarbledText, Loss::Nothing,
                          fmt::format("{} has characters beyond ASCII and comes out garbled", name),
                          pointer);
    }

    bool namesAreUtf8_;
    FindingList& findings_;
};

} // namespace

void checkSevenBit(Catalog catalog, const ResourceDocument& document, FindingList& findings) {
    const json::object& object = document.value->as_object();
    for (const char* name : {"baseCode", "helpFolder", "helpLocation"})
        if (!isAscii(object.at(name).as_string()))
            findings.add(Fault::GarbledText, Loss::Nothing,
                         fmt::format("{} has characters beyond ASCII and comes out garbled", name),
                         document.pointer + pointerStep(name));
    const json::array& items = object.at("refItems").as_array();
    for (std::size_t i = 0; i < items.size(); ++i) {
        const json::object& item = items[i].as_object();
        const std::string pointer = fmt::format("{}/refItems/{}", document.pointer, i);
        if (catalog == Catalog::Reference)
            SevenBitCheck(documentsApp(item), findings).checkObject(item, {}, pointer);
        else if (!isAscii(item.at("href").as_string()))
            findings.add(Fault::GarbledText, Loss::Nothing,
                         "href has characters beyond ASCII and comes out garbled",
                         pointer + "/href");
    }
}

} // namespace refdoc
