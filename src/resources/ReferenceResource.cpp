#include "resources/ReferenceResource.hpp"

#include <utility>

#include <boost/json/monotonic_resource.hpp>
#include <boost/json/value.hpp>

#include "jsontext/Parsing.hpp"
#include "jsontools/JsonAccess.hpp"
#include "resources/LookupDocument.hpp"
#include "resources/RefItemDocument.hpp"
#include "settings/MemberNames.hpp"

namespace reference::docparser {
namespace {

namespace json = boost::json;
using reference::property::RefItemLookup;

template <typename T>
ParsedResource<T> parseDocuments(const std::string& content,
                                 DocResource<T> parseDocument(const json::value&)) {
    ParsedResource<T> documents;
    json::monotonic_resource arena(1024);
    const json::value root = jsontext::parse(content, member::kAllNames, &arena);
    DocResource<T> main = parseDocument(root);
    const std::u16string& helpFolder = main.header.getHelpFolder();
    documents.try_emplace(helpFolder, std::move(main));
    const json::value* packages = findMember(getJsonObject(root), member::kSupportPackages);
    if (!packages)
        return documents;
    for (const json::value& element : DocResourceParser::ParsingTools::getJsonArray(*packages)) {
        DocResource<T> package = parseDocument(element);
        const std::u16string& baseCode = package.header.getBaseCode();
        documents.try_emplace(baseCode, std::move(package));
    }
    return documents;
}

} // namespace

template <>
ParsedResource<RefItemLookup> parseReferenceResource(const std::string& content) {
    return parseDocuments(content, parseLookupDocResource);
}

template <>
ParsedResource<RefItem> parseReferenceResource(const std::string& content) {
    return parseDocuments(content, parseRefItemDocResource);
}

} // namespace reference::docparser
