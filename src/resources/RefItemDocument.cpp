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
    const auto entityType = readEnumMember<RefEntityType>(entity, member::kType);
    const auto functionType = readEnumMember<FunctionType>(entity, member::kFcnType);
    return {entityType, getFluString(entity, member::kName, Utf8), functionType};
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
    const auto syntaxType = readEnumMember<SyntaxType>(group, member::kSyntaxType);
    return {getFluString(group, member::kTitle, Utf8), syntaxType,
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

// Only apps have names of input arguments and class properties that are not 7-bit text.
StringParsingType argumentNameParsing(const std::vector<RefEntity>& entities) {
    const bool hasApp = std::any_of(entities.begin(), entities.end(), [](const RefEntity& entity) {
        return entity.entityType == RefEntityType::App;
    });
    return hasApp ? Utf8 : Ascii;
}

using RefItems = decltype(DocResource<RefItem>::items);

/// Appends the item to the list of its href, and returns the place of that list. The search for it
/// begins at `hint`.
RefItems::iterator appendRefItem(const json::object& item, RefItems& items,
                                 RefItems::iterator hint) {
    std::u16string href = getFluString(item, member::kHref, Ascii);
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
    const auto entry = items.try_emplace(hint, href);
    entry->second.emplace_back(
        std::move(href), std::move(entities), std::move(packageName), std::move(purpose),
        std::move(introduced), std::move(description), std::move(thumbnail), deprecation,
        std::move(syntaxGroups), std::move(inputGroups), std::move(outputs),
        std::move(propertyGroups), std::move(seeAlso), std::move(examples), std::move(parameters));
    return entry;
}

} // namespace

DocResource<RefItem> parseRefItemDocResource(const json::value& document) {
    DocResource<RefItem> resource{getHeaderInfo(document), {}};
    // Documents mostly come in href order: the previous entry is the hint for the next one.
    auto entry = resource.items.end();
    for (const json::value& element : getJsonArray(document, member::kRefItems))
        entry = appendRefItem(getJsonObject(element), resource.items, entry);
    return resource;
}

} // namespace reference::docparser
