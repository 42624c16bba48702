#include "resources/RefItemDocument.hpp"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "jsontools/JsonAccess.hpp"
#include "reference/docparser/ParsingTools.hpp"
#include "resources/Arguments.hpp"
#include "resources/EnumMember.hpp"
#include "settings/MemberNames.hpp"

namespace reference::docparser {
namespace {

using DocResourceParser::ParsingTools::getFluString;
using DocResourceParser::ParsingTools::getFluStringWithFallback;
using DocResourceParser::ParsingTools::getHeaderInfo;
using DocResourceParser::ParsingTools::getJsonArray;
using enum DocResourceParser::ParsingTools::StringParsingType;
using DocResourceParser::ParsingTools::StringParsingType;
using reference::property::DeprecationStatus;
using reference::property::FunctionType;
using reference::property::RefEntityType;
using reference::property::SyntaxType;
namespace json = boost::json;

RefEntity readRefEntity(const json::object& entity) {
    return {readEnumMember<RefEntityType>(entity, member::kType),
            getFluString(entity, member::kName, Utf8),
            readEnumMember<FunctionType>(entity, member::kFcnType)};
}

AppThumbnail readAppThumbnail(const json::object& item) {
    const json::value* thumbnail = findMember(item, member::kAppThumbnail);
    if (!thumbnail)
        return {};
    const json::object& object = getJsonObject(*thumbnail);
    return {getFluString(object, member::kFileRef, Ascii),
            getFluString(object, member::kAlt, Utf8)};
}

SyntaxGroup readSyntaxGroup(const json::object& group) {
    return {getFluString(group, member::kTitle, Utf8),
            readEnumMember<SyntaxType>(group, member::kSyntaxType),
            readTexts(getJsonArray(getMember(group, member::kSyntax)), Ascii)};
}

SeeAlsoLink readSeeAlsoLink(const json::object& link) {
    return {getFluString(link, member::kUrl, Ascii), getFluString(link, member::kName, Utf8)};
}

ExampleLink readExampleLink(const json::object& example) {
    return {getFluString(example, member::kUrl, Ascii),
            getFluStringWithFallback(example, member::kOpenCommand, Ascii),
            getFluString(example, member::kTitle, Utf8)};
}

// Only apps name their input arguments and class properties in other than 7-bit text.
StringParsingType argumentNameParsing(const std::vector<RefEntity>& entities) {
    const bool hasApp = std::any_of(entities.begin(), entities.end(), [](const RefEntity& entity) {
        return entity.entityType == RefEntityType::App;
    });
    return hasApp ? Utf8 : Ascii;
}

/// Appends the item to those of its href.
void appendRefItem(const json::object& item, std::u16string&& href, std::vector<RefItem>& items) {
    std::u16string purpose = getFluString(item, member::kRefPurpose, Utf8);
    auto entities = readObjects(item, member::kRefEntity, readRefEntity);
    std::u16string packageName = getFluStringWithFallback(item, member::kPackageName, Ascii);
    std::u16string introduced = getFluStringWithFallback(item, member::kIntroduced, Ascii);
    std::u16string description = getFluStringWithFallback(item, member::kDescription, Utf8);
    AppThumbnail thumbnail = readAppThumbnail(item);
    const auto deprecation = readEnumMember<DeprecationStatus>(item, member::kDeprecationStatus);
    auto syntaxGroups = readObjects(item, member::kSyntaxGroup, readSyntaxGroup);
    const StringParsingType nameParsing = argumentNameParsing(entities);
    auto inputGroups = parseInputGroups(item, href, nameParsing);
    auto outputs = parseOutputs(item, href);
    auto propertyGroups = parseClassPropertyGroups(item, href, nameParsing);
    auto seeAlso = readObjects(item, member::kSeeAlso, readSeeAlsoLink);
    auto examples = readObjects(item, member::kExamples, readExampleLink);
    auto parameters = parseParameters(item, href);
    items.emplace_back(std::move(href), std::move(entities), std::move(packageName),
                       std::move(purpose), std::move(introduced), std::move(description),
                       std::move(thumbnail), deprecation, std::move(syntaxGroups),
                       std::move(inputGroups), std::move(outputs), std::move(propertyGroups),
                       std::move(seeAlso), std::move(examples), std::move(parameters));
}

} // namespace

DocResource<RefItem> parseRefItemDocResource(const json::value& document) {
    DocResource<RefItem> resource{getHeaderInfo(document), {}};
    // Documents mostly come in href order: the previous entry is the hint for the next one.
    auto entry = resource.items.end();
    for (const json::value& element : getJsonArray(document, member::kRefItems)) {
        const json::object& item = getJsonObject(element);
        std::u16string href = getFluString(item, member::kHref, Ascii);
        entry = resource.items.try_emplace(entry, href);
        appendRefItem(item, std::move(href), entry->second);
    }
    return resource;
}

} // namespace reference::docparser
