#include "refdoc/check/DeliveredLookups.hpp"

#include <exception>
#include <functional>
#include <initializer_list>
#include <string_view>
#include <tuple>

#include <boost/json/value.hpp>

#include "reference/docparser/DocResourceParser.hpp"
#include "reference/docparser/ParsingTools.hpp"

namespace refdoc {

namespace {

using reference::docparser::LookupResources;
using reference::property::FunctionType;
using reference::property::HeaderInfo;
using reference::property::RefEntityType;
using reference::property::RefItemLookup;
namespace parsing = reference::docparser::DocResourceParser::ParsingTools;

/// Of texts with their lengths, lest one's end be taken for the next one's beginning.
std::size_t hashOf(std::initializer_list<std::u16string_view> texts) {
    std::u16string whole;
    for (const std::u16string_view text : texts) {
        for (std::size_t size = text.size(); size > 0; size >>= 15)
            whole += static_cast<char16_t>(0x8000 | (size & 0x7FFF));
        (whole += u'\0') += text;
    }
    return std::hash<std::u16string>()(whole);
}

std::size_t linkHash(const std::u16string& key, const RefItemLookup& lookup) {
    return hashOf({key, lookup.getName(), lookup.getHref()});
}

std::size_t lookupHash(const std::u16string& key, const RefItemLookup& lookup) {
    const std::u16string kinds{static_cast<char16_t>(lookup.getEntityType()),
                               static_cast<char16_t>(lookup.getFunctionType()),
                               static_cast<char16_t>(lookup.isDeprecated())};
    return hashOf({key, lookup.getName(), lookup.getHref(), lookup.getPurpose(), kinds});
}

/// The value that a member's text names, else the default.
template <typename Enumeration>
Enumeration enumerationOf(const boost::json::object& item, std::string_view member) {
    const boost::json::value* value = item.if_contains(member);
    if (value == nullptr || !value->is_string())
        return Enumeration::getDefaultValue();
    try {
        return Enumeration::stringToEnum(std::string_view(value->get_string()));
    } catch (const std::exception&) {
        return Enumeration::getDefaultValue();
    }
}

auto textsOf(const HeaderInfo& header) {
    return std::tie(header.getProductName(), header.getBaseCode(), header.getHelpFolder(),
                    header.getHelpLocation());
}

} // namespace

DeliveredLookups::DeliveredLookups() {
    const LookupResources resources =
        reference::docparser::DocResourceParser::getResourceLookupFiles();
    for (const auto* documents : {&resources.first, &resources.second}) {
        for (const auto& [key, document] : *documents) {
            headers_.emplace(key, document.header);
            for (const auto& [name, lookups] : document.items) {
                for (const RefItemLookup& lookup : lookups) {
                    lookups_.insert(lookupHash(key, lookup));
                    links_.insert(linkHash(key, lookup));
                }
            }
        }
    }
}

bool DeliveredLookups::has(const std::u16string& key, const RefItemLookup& lookup) const {
    return lookups_.contains(lookupHash(key, lookup));
}

bool DeliveredLookups::hasLink(const std::u16string& key, const RefItemLookup& lookup) const {
    return links_.contains(linkHash(key, lookup));
}

const HeaderInfo* DeliveredLookups::header(const std::u16string& key) const {
    const auto found = headers_.find(key);
    return found == headers_.end() ? nullptr : &found->second;
}

RefItemLookup lookupOf(const boost::json::object& item) {
    using enum parsing::StringParsingType;
    return {parsing::getFluString(item, "name", Utf8),
            enumerationOf<RefEntityType>(item, "type"),
            parsing::getFluString(item, "refpurpose", Utf8),
            item.contains("deprecated"),
            parsing::getFluString(item, "href", Ascii),
            enumerationOf<FunctionType>(item, "fcntype")};
}

bool equals(const HeaderInfo& left, const HeaderInfo& right) {
    return textsOf(left) == textsOf(right);
}

} // namespace refdoc
