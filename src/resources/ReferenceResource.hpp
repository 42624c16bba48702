#pragma once

#include <map>
#include <string>
#include <type_traits>
#include <utility>

#include <boost/json/monotonic_resource.hpp>

#include "jsontext/Parsing.hpp"
#include "jsontools/JsonAccess.hpp"
#include "resources/LookupDocument.hpp"
#include "resources/RefItemDocument.hpp"
#include "settings/MemberNames.hpp"

namespace reference::docparser {

/// The documents of one resource file: the main one under its help folder, those of support
/// packages under their base codes.
template <typename T>
using ParsedResource = std::map<std::u16string, DocResource<T>>;

template <typename T>
DocResource<T> parseDocResource(const boost::json::value& document) {
    if constexpr (std::is_same_v<T, RefItem>)
        return parseRefItemDocResource(document);
    else
        return parseLookupDocResource(document);
}

/// Parses the text of a resource file whose items are of type `T`, `RefItem` or `RefItemLookup`.
/// Of several documents with one key the first stays. Throws what Boost.JSON throws for text that
/// is not JSON, and `DocParserException` for any document that breaks the format.
template <typename T>
ParsedResource<T> parseReferenceResource(const std::string& content) {
    ParsedResource<T> documents;
    boost::json::monotonic_resource arena(1024);
    const boost::json::value root = jsontext::parse(content, member::kAllNames, &arena);
    DocResource<T> main = parseDocResource<T>(root);
    const std::u16string& helpFolder = main.header.getHelpFolder();
    documents.try_emplace(helpFolder, std::move(main));
    if (const auto* packages = findMember(getJsonObject(root), member::kSupportPackages)) {
        for (const auto& element : DocResourceParser::ParsingTools::getJsonArray(*packages)) {
            DocResource<T> package = parseDocResource<T>(element);
            const std::u16string& baseCode = package.header.getBaseCode();
            documents.try_emplace(baseCode, std::move(package));
        }
    }
    return documents;
}

} // namespace reference::docparser
