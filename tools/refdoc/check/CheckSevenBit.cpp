#include "refdoc/check/CheckSevenBit.hpp"

#include <algorithm>
#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <fmt/format.h>

#include "refdoc/format/JsonPositions.hpp"

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

/// What is read of an item, or of a list or object within one.
struct Part {
    Names sevenBitTexts;
    Names parts; ///< lists and objects of further members
};

/// By the member that holds it; the item itself has none.
const Part& partOf(std::string_view member) {
    static const std::map<std::string_view, Part> parts{
        {"",
         {{"href", "packagename", "introduced"},
          {"appthumbnail", "syntaxgroup", "inputgroup", "outputs", "classpropertygroup", "seealso",
           "examples", "parameters"}}},
        {"appthumbnail", {{"fileref"}, {}}},
        {"syntaxgroup", {{"syntax"}, {}}},
        {"inputgroup", {{}, {"inputs", "namevaluepairs"}}},
        {"namevaluepairs", {{}, {"inputs"}}},
        {"inputs", {{"htmlid", "name"}, {}}},
        {"outputs", {{"htmlid"}, {}}},
        {"parameters", {{"htmlid"}, {}}},
        {"classpropertygroup", {{}, {"classproperty"}}},
        {"classproperty", {{"name"}, {}}},
        {"seealso", {{"url"}, {}}},
        {"examples", {{"url", "open_command"}, {}}},
    };
    return parts.at(member);
}

void checkAscii(std::string_view text, std::string_view name, const std::string& pointer,
                FindingList& findings) {
    if (!isAscii(text))
        findings.add(Fault::GarbledText, Loss::Nothing,
                     fmt::format("{} has characters beyond ASCII and comes out garbled", name),
                     pointer);
}

/// Goes through an item. `name` is the member that holds what is gone through, empty for the item.
class SevenBitCheck {
public:
    SevenBitCheck(bool namesAreUtf8, FindingList& findings)
        : namesAreUtf8_(namesAreUtf8), findings_(findings) {}

    void checkObject(const json::object& object, std::string_view name,
                     const std::string& pointer) {
        const Part& part = partOf(name);
        for (const json::key_value_pair& member : object) {
            const std::string memberPointer = pointer + pointerStep(member.key());
            if (part.parts.contains(member.key()) && isRead(member.key(), name, object))
                checkPart(member.value(), member.key(), memberPointer);
            else if (part.sevenBitTexts.contains(member.key()) && isSevenBit(member.key()))
                checkTexts(member.value(), member.key(), memberPointer);
        }
    }

private:
    /// The names of arguments and class properties are 7-bit texts but for apps.
    bool isSevenBit(std::string_view member) const { return member != "name" || !namesAreUtf8_; }

    /// Where an input group has name-value pairs, nothing else is read of it.
    static bool isRead(std::string_view member, std::string_view parent,
                       const json::object& object) {
        return parent != "inputgroup" || member == "namevaluepairs" ||
               !object.contains("namevaluepairs");
    }

    void checkPart(const json::value& value, std::string_view name, const std::string& pointer) {
        if (value.is_object())
            return checkObject(value.get_object(), name, pointer);
        for (std::size_t i = 0; i < value.as_array().size(); ++i)
            checkObject(value.at(i).as_object(), name, fmt::format("{}/{}", pointer, i));
    }

    void checkTexts(const json::value& value, std::string_view name, const std::string& pointer) {
        if (value.is_string())
            return checkTextAt(value.get_string(), name, pointer);
        for (std::size_t i = 0; i < value.as_array().size(); ++i)
            checkTextAt(value.at(i).as_string(), name, fmt::format("{}/{}", pointer, i));
    }

    void checkTextAt(std::string_view text, std::string_view name, const std::string& pointer) {
        checkAscii(text, name, pointer, findings_);
    }

    bool namesAreUtf8_;
    FindingList& findings_;
};

} // namespace

void checkSevenBit(Catalog catalog, const ResourceDocument& document, FindingList& findings) {
    const json::object& object = document.value->as_object();
    for (const char* name : {"baseCode", "helpFolder", "helpLocation"})
        checkAscii(object.at(name).as_string(), name, document.pointer + pointerStep(name),
                   findings);
    const json::array& items = object.at("refItems").as_array();
    for (std::size_t i = 0; i < items.size(); ++i) {
        const json::object& item = items[i].as_object();
        const std::string pointer = fmt::format("{}/refItems/{}", document.pointer, i);
        if (catalog == Catalog::Reference)
            SevenBitCheck(documentsApp(item), findings).checkObject(item, {}, pointer);
        else
            checkAscii(item.at("href").as_string(), "href", pointer + "/href", findings);
    }
}

} // namespace refdoc
