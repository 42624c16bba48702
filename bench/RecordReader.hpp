#pragma once

#include <algorithm>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Members.hpp"
#include "TextReading.hpp"
#include "environment/ReferenceProperty.hpp"
#include "reference/docparser/DocResource.hpp"
#include "reference/docparser/RefItem.hpp"

/// Builds the library's records as a competent user of a JSON library would: without checks of
/// kinds beyond those of the JSON library, without merging, without a test of what is installed.
namespace bench {

namespace docparser = reference::docparser;
namespace property = reference::property;

using Lookups = std::map<std::u16string, docparser::DocResource<property::RefItemLookup>>;
using RefItems = std::map<std::u16string, docparser::DocResource<docparser::RefItem>>;

/// `Json` wraps one JSON library: types `Value` and `Object`, and static functions
/// `toObject(Value&)`, `find(Object&, Member)` (an optional value), `text(Value&)`, `size(Value&)`
/// of a list (0 where counting would cost) and `forEach(Value&, use)` for each of its elements. A
/// library for which one pass over an item is faster also has `lookupTexts(Object&)`.
template <typename Json>
class RecordReader {
public:
    using Value = typename Json::Value;
    using Object = typename Json::Object;

    static Lookups readLookups(Value root) {
        return readFile<property::RefItemLookup>(root, [](Object item, auto& document, auto& last) {
            property::RefItemLookup lookup = readLookup(item);
            last = findEntry(document.items, last, lookup.getName());
            last->second.push_back(std::move(lookup));
        });
    }

    static RefItems readRefItems(Value root) {
        return readFile<docparser::RefItem>(root, [](Object item, auto& document, auto& last) {
            std::u16string href = bytes(item, Member::Href);
            last = findEntry(document.items, last, href);
            last->second.push_back(readRefItem(item, std::move(href)));
        });
    }

private:
    using Decode = std::u16string (*)(std::string_view);

    /// The yardstick inserts in the cheapest way: documents come in the order of their keys.
    template <typename Items, typename Entry>
    static Entry findEntry(Items& items, Entry last, const std::u16string& key) {
        if constexpr (requires { Json::kExpectsOrder; })
            return items.try_emplace(last, key);
        else
            return items.try_emplace(key).first;
    }

    static Value require(Object& object, Member member) {
        if (auto value = Json::find(object, member))
            return *value;
        throw std::out_of_range("a member is missing");
    }

    static std::u16string bytes(Object& object, Member member) {
        return read(object, member, widen);
    }

    static std::u16string text(Object& object, Member member) {
        return read(object, member, decode);
    }

    static std::u16string read(Object& object, Member member, Decode convert) {
        Value value = require(object, member);
        return convert(Json::text(value));
    }

    static std::u16string readOptional(Object& object, Member member, Decode convert) {
        auto value = Json::find(object, member);
        return value ? convert(Json::text(*value)) : std::u16string();
    }

    template <typename Enumeration>
    static Enumeration readEnum(Object& object, Member member) {
        return toEnum<Enumeration>(findText(object, member));
    }

    template <typename Read>
    static auto readList(Value list, Read readElement) {
        std::vector<decltype(readElement(std::declval<Value>()))> elements;
        elements.reserve(Json::size(list));
        Json::forEach(list, [&](Value element) { elements.push_back(readElement(element)); });
        return elements;
    }

    /// The objects of an optional list.
    template <typename Read>
    static auto readObjects(Object& object, Member member, Read readElement) {
        const auto readValue = [&readElement](Value element) {
            return readElement(Json::toObject(element));
        };
        auto list = Json::find(object, member);
        return list ? readList(*list, readValue)
                    : std::vector<decltype(readValue(std::declval<Value>()))>();
    }

    static std::vector<std::u16string> readTexts(Value list, Decode convert) {
        return readList(list, [convert](Value element) { return convert(Json::text(element)); });
    }

    static property::HeaderInfo readHeader(Object& document) {
        std::u16string productName = text(document, Member::ProductName);
        std::u16string baseCode = bytes(document, Member::BaseCode);
        std::u16string helpFolder = bytes(document, Member::HelpFolder);
        return {std::move(productName), std::move(baseCode), std::move(helpFolder),
                bytes(document, Member::HelpLocation)};
    }

    template <typename Record, typename Add>
    static docparser::DocResource<Record> readDocument(Object& source, Add add) {
        docparser::DocResource<Record> document{readHeader(source), {}};
        Value list = require(source, Member::RefItems);
        auto last = document.items.end();
        Json::forEach(list, [&](Value item) { add(Json::toObject(item), document, last); });
        return document;
    }

    template <typename Record, typename Add>
    static std::map<std::u16string, docparser::DocResource<Record>> readFile(Value root, Add add) {
        std::map<std::u16string, docparser::DocResource<Record>> documents;
        Object main = Json::toObject(root);
        auto document = readDocument<Record>(main, add);
        documents.try_emplace(document.header.getHelpFolder(), std::move(document));
        if (auto packages = Json::find(main, Member::SupportPackages)) {
            Json::forEach(*packages, [&](Value element) {
                Object package = Json::toObject(element);
                auto part = readDocument<Record>(package, add);
                documents.try_emplace(part.header.getBaseCode(), std::move(part));
            });
        }
        return documents;
    }

    static std::optional<std::string_view> findText(Object& object, Member member) {
        auto value = Json::find(object, member);
        return value ? std::optional<std::string_view>(Json::text(*value)) : std::nullopt;
    }

    static LookupTexts getLookupTexts(Object& item) {
        if constexpr (requires { Json::lookupTexts(item); }) {
            return Json::lookupTexts(item);
        } else {
            return {findText(item, Member::Name).value(),
                    findText(item, Member::Refpurpose).value(),
                    findText(item, Member::Href).value(),
                    findText(item, Member::Type),
                    findText(item, Member::Fcntype),
                    Json::find(item, Member::Deprecated).has_value()};
        }
    }

    static property::RefItemLookup readLookup(Object& item) {
        const LookupTexts texts = getLookupTexts(item);
        return {decode(texts.name),    toEnum<property::RefEntityType>(texts.type),
                decode(texts.purpose), texts.isDeprecated,
                widen(texts.href),     toEnum<property::FunctionType>(texts.functionType)};
    }

    static docparser::RefEntity readEntity(Object entity) {
        const auto type = readEnum<property::RefEntityType>(entity, Member::Type);
        std::u16string name = text(entity, Member::Name);
        return {type, std::move(name), readEnum<property::FunctionType>(entity, Member::Fcntype)};
    }

    static docparser::AppThumbnail readThumbnail(Object& item) {
        auto value = Json::find(item, Member::Appthumbnail);
        if (!value)
            return {};
        Object thumbnail = Json::toObject(*value);
        std::u16string file = bytes(thumbnail, Member::Fileref);
        return {std::move(file), text(thumbnail, Member::Alt)};
    }

    static docparser::SyntaxGroup readSyntaxGroup(Object group) {
        std::u16string title = text(group, Member::Title);
        const auto type = readEnum<property::SyntaxType>(group, Member::Syntaxtype);
        return {std::move(title), type, readTexts(require(group, Member::Syntax), widen)};
    }

    static docparser::SeeAlsoLink readSeeAlso(Object link) {
        std::u16string url = bytes(link, Member::Url);
        return {std::move(url), text(link, Member::Name)};
    }

    static docparser::ExampleLink readExample(Object example) {
        std::u16string url = bytes(example, Member::Url);
        std::u16string command = readOptional(example, Member::OpenCommand, widen);
        return {std::move(url), std::move(command), text(example, Member::Title)};
    }

    static docparser::ArgumentInfo readArgument(Object& argument, std::u16string name,
                                                std::u16string href) {
        std::u16string purpose = text(argument, Member::Purpose);
        std::vector<std::u16string> values;
        if (auto list = Json::find(argument, Member::Value))
            values = readTexts(*list, decode);
        return {std::move(name), std::move(purpose), std::move(values), std::move(href)};
    }

    static docparser::ArgumentInfo readAnchored(Object& argument, const std::u16string& href,
                                                Decode convertName) {
        std::u16string anchor = readOptional(argument, Member::Htmlid, widen);
        std::u16string name = read(argument, Member::Name, convertName);
        return readArgument(argument, std::move(name), join(href, u"#", anchor));
    }

    static docparser::InputGroup readInputGroup(Object& group, const std::u16string& href,
                                                Decode convertName, bool isNameValuePair) {
        std::u16string title = text(group, Member::Title);
        const auto readInput = [&](Object input) -> docparser::InputArgument {
            docparser::ArgumentInfo info = readAnchored(input, href, convertName);
            const auto type = readEnum<property::SyntaxType>(input, Member::Syntaxtype);
            return {std::move(info), type, readOptional(input, Member::Defaultvalue, decode),
                    isNameValuePair};
        };
        return {std::move(title), readObjects(group, Member::Inputs, readInput)};
    }

    static std::vector<docparser::InputGroup>
    readInputGroups(Object& item, const std::u16string& href, Decode convertName) {
        std::vector<docparser::InputGroup> groups;
        auto list = Json::find(item, Member::Inputgroup);
        if (!list)
            return groups;
        groups.reserve(Json::size(*list));
        Json::forEach(*list, [&](Value element) {
            Object group = Json::toObject(element);
            auto pairs = Json::find(group, Member::Namevaluepairs);
            if (!pairs) {
                groups.push_back(readInputGroup(group, href, convertName, false));
                return;
            }
            Json::forEach(*pairs, [&](Value pair) {
                Object pairGroup = Json::toObject(pair);
                groups.push_back(readInputGroup(pairGroup, href, convertName, true));
            });
        });
        return groups;
    }

    static docparser::OutputArgument readOutput(Object output, const std::u16string& href) {
        docparser::ArgumentInfo info = readAnchored(output, href, decode);
        return {std::move(info), readEnum<property::SyntaxType>(output, Member::Syntaxtype)};
    }

    static docparser::ArgumentWithDefault readParameter(Object parameter,
                                                        const std::u16string& href) {
        docparser::ArgumentInfo info = readAnchored(parameter, href, decode);
        return {std::move(info), readOptional(parameter, Member::Defaultvalue, decode)};
    }

    static docparser::ClassPropertyGroup readPropertyGroup(Object group, const std::u16string& href,
                                                           Decode convertName) {
        const auto readProperty = [&](Value element) -> docparser::ArgumentWithDefault {
            Object argument = Json::toObject(element);
            std::u16string name = read(argument, Member::Name, convertName);
            std::u16string anchor = join(href, u"#prop_", name);
            auto info = readArgument(argument, std::move(name), std::move(anchor));
            return {std::move(info), readOptional(argument, Member::Defaultvalue, decode)};
        };
        std::u16string title = readOptional(group, Member::Title, decode);
        return {std::move(title), readList(require(group, Member::Classproperty), readProperty)};
    }

    static docparser::RefItem readRefItem(Object& item, std::u16string href) {
        std::u16string purpose = text(item, Member::Refpurpose);
        auto entities = readObjects(item, Member::Refentity, readEntity);
        const bool hasApp = std::any_of(entities.begin(), entities.end(), [](const auto& entity) {
            return entity.entityType == property::RefEntityType::App;
        });
        const Decode convertName = hasApp ? decode : widen;
        std::u16string packageName = readOptional(item, Member::Packagename, widen);
        std::u16string introduced = readOptional(item, Member::Introduced, widen);
        std::u16string description = readOptional(item, Member::Description, decode);
        docparser::AppThumbnail thumbnail = readThumbnail(item);
        const auto status = readEnum<property::DeprecationStatus>(item, Member::Deprecationstatus);
        auto syntaxGroups = readObjects(item, Member::Syntaxgroup, readSyntaxGroup);
        auto inputs = readInputGroups(item, href, convertName);
        auto outputs = readObjects(item, Member::Outputs,
                                   [&](Object output) { return readOutput(output, href); });
        auto properties = readObjects(item, Member::Classpropertygroup, [&](Object group) {
            return readPropertyGroup(group, href, convertName);
        });
        auto seeAlso = readObjects(item, Member::Seealso, readSeeAlso);
        auto examples = readObjects(item, Member::Examples, readExample);
        auto parameters = readObjects(item, Member::Parameters, [&](Object parameter) {
            return readParameter(parameter, href);
        });
        return {std::move(href),         std::move(entities),
                std::move(packageName),  std::move(purpose),
                std::move(introduced),   std::move(description),
                std::move(thumbnail),    status,
                std::move(syntaxGroups), std::move(inputs),
                std::move(outputs),      std::move(properties),
                std::move(seeAlso),      std::move(examples),
                std::move(parameters)};
    }
};

} // namespace bench
