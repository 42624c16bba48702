#pragma once

#include <map>
#include <sstream>
#include <string>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>

#include "environment/PathAndText.hpp"
#include "reference/docparser/DocResource.hpp"
#include "reference/docparser/RefItem.hpp"

/// A short notation for full reference files, the same for a file's text and for what is read:
/// "key:product href=purpose href=purpose | key:product ...", the product's document first.
namespace testsupport {

inline boost::json::object parseDocumentNotation(const std::string& notation, bool isMain) {
    std::istringstream words(notation);
    std::string word;
    words >> word;
    const std::size_t colon = word.find(':');
    const std::string key = word.substr(0, colon);
    boost::json::array items;
    boost::json::object document{{"productName", word.substr(colon + 1)},
                                 {"baseCode", isMain ? "not the key" : key},
                                 {"helpFolder", isMain ? key : "not the key"},
                                 {"helpLocation", ""}};
    while (words >> word) {
        const std::size_t equals = word.find('=');
        items.push_back(
            {{"href", word.substr(0, equals)}, {"refpurpose", word.substr(equals + 1)}});
    }
    document["refItems"] = items;
    return document;
}

inline std::string referenceText(const std::string& notation) {
    std::istringstream documents(notation);
    std::string part;
    std::getline(documents, part, '|');
    boost::json::object main = parseDocumentNotation(part, true);
    boost::json::array packages;
    while (std::getline(documents, part, '|'))
        packages.push_back(parseDocumentNotation(part, false));
    if (!packages.empty())
        main["supportPackages"] = packages;
    return boost::json::serialize(main);
}

using ReferenceResource =
    std::map<std::u16string, reference::docparser::DocResource<reference::docparser::RefItem>>;

inline std::string notationOf(const ReferenceResource& resource) {
    using fl::i18n::to_string;
    std::string notation;
    for (const auto& [key, document] : resource) {
        notation += notation.empty() ? "" : " | ";
        notation += to_string(key) + ':' + to_string(document.header.getProductName());
        for (const auto& [href, items] : document.items) {
            for (const auto& item : items)
                notation += ' ' + to_string(href) + '=' + to_string(item.refPurpose);
        }
    }
    return notation;
}

} // namespace testsupport
