#include "resources/Arguments.hpp"

#include <algorithm>
#include <cstddef>
#include <utility>

#include <boost/json/array.hpp>
#include <boost/json/value.hpp>

#include "jsontools/JsonAccess.hpp"
#include "resources/EnumMember.hpp"
#include "settings/Constants.hpp"
#include "settings/MemberNames.hpp"

namespace reference::docparser {
namespace {

using DocResourceParser::ParsingTools::getFluString;
using DocResourceParser::ParsingTools::getFluStringWithFallback;
using DocResourceParser::ParsingTools::getJsonArray;
using DocResourceParser::ParsingTools::StringParsingType;
using reference::property::SyntaxType;
namespace json = boost::json;

const std::u16string& propAnchorPrefix() {
    static const auto& kPropAnchorPrefix = *new std::u16string(u"#prop_");
    return kPropAnchorPrefix;
}

std::u16string join(const std::u16string& first, const std::u16string& second,
                    const std::u16string& third) {
    std::u16string text;
    text.reserve(first.size() + second.size() + third.size());
    return text.append(first).append(second).append(third);
}

ArgumentInfo readArgumentDetails(const json::object& element, std::u16string&& name,
                                 std::u16string&& href) {
    std::u16string purpose = getFluString(element, member::kPurpose, StringParsingType::Utf8);
    std::vector<std::u16string> values;
    if (const json::value* list = findMember(element, member::kValue))
        values = readTexts(getJsonArray(*list), StringParsingType::Utf8);
    return {std::move(name), std::move(purpose), std::move(values), std::move(href)};
}

ArgumentInfo parseArgumentInfo(const json::object& argument, const std::u16string& itemHref,
                               StringParsingType nameParsing) {
    const std::u16string htmlId =
        getFluStringWithFallback(argument, member::kHtmlId, StringParsingType::Ascii);
    std::u16string href = join(itemHref, kHashSign, htmlId);
    std::u16string name = getFluString(argument, member::kName, nameParsing);
    return readArgumentDetails(argument, std::move(name), std::move(href));
}

std::u16string readDefaultValue(const json::object& element) {
    return getFluStringWithFallback(element, member::kDefaultValue, StringParsingType::Utf8);
}

/// Makes room for `count` further groups. The room at least doubles: many small reservations of
/// exactly what is needed would move all groups each time.
void reserveMore(std::vector<InputGroup>& groups, std::size_t count) {
    const std::size_t needed = groups.size() + count;
    if (needed > groups.capacity())
        groups.reserve(std::max(needed, 2 * groups.capacity()));
}

InputGroup parseInputGroup(const json::object& group, const std::u16string& itemHref,
                           StringParsingType nameParsing, bool isNameValuePair) {
    const auto readInput = [&](const json::object& input) -> InputArgument {
        return {parseArgumentInfo(input, itemHref, nameParsing),
                readEnumMember<SyntaxType>(input, member::kSyntaxType), readDefaultValue(input),
                isNameValuePair};
    };
    std::vector<InputArgument> inputs = readObjects(group, member::kInputs, readInput);
    return {getFluString(group, member::kTitle, StringParsingType::Utf8), std::move(inputs)};
}

ArgumentWithDefault parseClassProperty(const json::object& property, const std::u16string& itemHref,
                                       StringParsingType nameParsing) {
    std::u16string name = getFluString(property, member::kName, nameParsing);
    std::u16string href = join(itemHref, propAnchorPrefix(), name);
    return {readArgumentDetails(property, std::move(name), std::move(href)),
            readDefaultValue(property)};
}

} // namespace

std::vector<InputGroup> parseInputGroups(const json::object& item, const std::u16string& itemHref,
                                         StringParsingType nameParsing) {
    std::vector<InputGroup> groups;
    const json::value* list = findMember(item, member::kInputGroup);
    if (!list)
        return groups;
    const json::array& elements = getJsonArray(*list);
    groups.reserve(elements.size());
    for (const json::value& element : elements) {
        const json::object& group = getJsonObject(element);
        const json::value* pairs = findMember(group, member::kNameValuePairs);
        if (!pairs) {
            groups.push_back(parseInputGroup(group, itemHref, nameParsing, false));
            continue;
        }
        const json::array& pairGroups = getJsonArray(*pairs);
        reserveMore(groups, pairGroups.size());
        for (const json::value& pairGroup : pairGroups)
            groups.push_back(
                parseInputGroup(getJsonObject(pairGroup), itemHref, nameParsing, true));
    }
    return groups;
}

std::vector<OutputArgument> parseOutputs(const json::object& item, const std::u16string& itemHref) {
    return readObjects(item, member::kOutputs, [&](const json::object& output) -> OutputArgument {
        return {parseArgumentInfo(output, itemHref, StringParsingType::Utf8),
                readEnumMember<SyntaxType>(output, member::kSyntaxType)};
    });
}

std::vector<ArgumentWithDefault> parseParameters(const json::object& item,
                                                 const std::u16string& itemHref) {
    const auto readParameter = [&](const json::object& parameter) -> ArgumentWithDefault {
        return {parseArgumentInfo(parameter, itemHref, StringParsingType::Utf8),
                readDefaultValue(parameter)};
    };
    return readObjects(item, member::kParameters, readParameter);
}

std::vector<ClassPropertyGroup> parseClassPropertyGroups(const json::object& item,
                                                         const std::u16string& itemHref,
                                                         StringParsingType nameParsing) {
    const auto readGroup = [&](const json::object& group) -> ClassPropertyGroup {
        const auto readProperty = [&](const json::value& property) {
            return parseClassProperty(getJsonObject(property), itemHref, nameParsing);
        };
        return {getFluStringWithFallback(group, member::kTitle, StringParsingType::Utf8),
                readElements(getJsonArray(getMember(group, member::kClassProperty)), readProperty)};
    };
    return readObjects(item, member::kClassPropertyGroup, readGroup);
}

} // namespace reference::docparser
