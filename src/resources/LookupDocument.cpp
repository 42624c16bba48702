#include "resources/LookupDocument.hpp"

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
    return {getFluString(item, member::kName, Utf8),
            readEnumMember<RefEntityType>(item, member::kType),
            getFluString(item, member::kRefPurpose, Utf8),
            findMember(item, member::kDeprecated) != nullptr,
            getFluString(item, member::kHref, Ascii),
            readEnumMember<FunctionType>(item, member::kFcnType)};
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
