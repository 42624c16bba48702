#include "resources/LookupDocument.hpp"

#include <array>
#include <string>
#include <utility>

#include "jsontools/JsonAccess.hpp"
#include "reference/docparser/ParsingTools.hpp"
#include "resources/EnumMember.hpp"
#include "settings/MemberNames.hpp"

namespace reference::docparser {
namespace {

using DocResourceParser::ParsingTools::getFluString;
using DocResourceParser::ParsingTools::getHeaderInfo;
using DocResourceParser::ParsingTools::getJsonArray;
using enum DocResourceParser::ParsingTools::StringParsingType;
using reference::property::FunctionType;
using reference::property::RefEntityType;
using reference::property::RefItemLookup;

RefItemLookup readLookup(const boost::json::object& item) {
    // Most items have them in this order.
    const std::array members{&member::kName, &member::kRefPurpose, &member::kHref,
                             &member::kType, &member::kFcnType,    &member::kDeprecated};
    const auto [name, purpose, href, type, functionType, deprecated] = findMembers(item, members);
    std::u16string nameText = getFluString(requireMember(name), Utf8);
    std::u16string purposeText = getFluString(requireMember(purpose), Utf8);
    std::u16string hrefText = getFluString(requireMember(href), Ascii);
    const auto entityType = readEnum<RefEntityType>(type);
    return {std::move(nameText),   entityType,          std::move(purposeText),
            deprecated != nullptr, std::move(hrefText), readEnum<FunctionType>(functionType)};
}

} // namespace

DocResource<RefItemLookup> parseLookupDocResource(const boost::json::value& document) {
    DocResource<RefItemLookup> resource{getHeaderInfo(document), {}};
    // Documents mostly come in the order of names: the previous entry is the hint for the next one.
    auto entry = resource.items.end();
    for (const boost::json::value& element : getJsonArray(document, member::kRefItems)) {
        RefItemLookup lookup = readLookup(getJsonObject(element));
        entry = resource.items.try_emplace(entry, lookup.getName());
        entry->second.push_back(std::move(lookup));
    }
    return resource;
}

} // namespace reference::docparser
