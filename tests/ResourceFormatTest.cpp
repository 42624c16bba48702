#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>
#include <gtest/gtest.h>

#include "environment/ReferenceProperty.hpp"
#include "reference/docparser/DocParserException.hpp"
#include "reference/docparser/RefItem.hpp"
#include "resources/ReferenceResource.hpp"
#include "support/JsonMutations.hpp"
#include "support/RefItemDescription.hpp"
#include "support/ResourceModel.hpp"

namespace reference::docparser {
namespace {

namespace json = boost::json;
using reference::property::RefItemLookup;
using testsupport::describe;
using testsupport::withoutMember;
using testsupport::withValue;

// Most texts hold a letter that the two conversions read differently.
const json::value kReference = json::parse(R"({
    "productName": "product é", "baseCode": "code é", "helpFolder": "folder é",
    "helpLocation": "location é", "other": 1, "refItems": [{
    "href": "f.html", "refpurpose": "purpose é", "packagename": "package é", "introduced": "R1 é",
    "description": "description é", "deprecationstatus": "removed", "unknown": 1,
    "refentity": [{"type": "class", "fcntype": "script", "name": "entity é", "unknown": 1}],
    "appthumbnail": {"fileref": "file é", "alt": "alt é", "unknown": 1},
    "syntaxgroup": [{"syntaxtype": "command", "title": "title é", "syntax": ["s1 é", "s2"]}],
    "inputgroup": [
        {"title": "title é", "inputs": [{"htmlid": "in é", "name": "name é",
            "purpose": "purpose é", "value": ["v1 é", "v2"], "syntaxtype": "creation",
            "defaultvalue": "default é"}]},
        {"title": 1, "inputs": 2, "namevaluepairs": [
            {"title": "pairs", "inputs": [{"name": "pair é", "purpose": ""}]},
            {"title": "empty", "namevaluepairs": 3}]},
        {"namevaluepairs": []},
        {"title": "last"}],
    "outputs": [{"htmlid": "out é", "name": "name é", "purpose": "purpose é",
        "value": ["v1 é", "v2"], "syntaxtype": "function"}],
    "classpropertygroup": [{"title": "title é", "classproperty": [{"name": "Color é",
        "purpose": "purpose é", "value": ["v1 é", "v2"], "defaultvalue": "default é"}]}],
    "seealso": [{"url": "url é", "name": "name é"}],
    "examples": [{"url": "url é", "open_command": "open é", "title": "title é"}],
    "parameters": [{"htmlid": "par é", "name": "name é", "purpose": "purpose é",
        "value": ["v1 é", "v2"], "defaultvalue": "default é"}]}]
})");

const json::value kReferenceRead = json::parse(R"({"folder Ã©": {
    "productName": "product é", "baseCode": "code Ã©", "helpFolder": "folder Ã©",
    "helpLocation": "location Ã©", "refItems": {"f.html": [{
    "href": "f.html", "refpurpose": "purpose é", "packagename": "package Ã©",
    "introduced": "R1 Ã©", "description": "description é", "deprecationstatus": "removed",
    "refentity": [{"type": "class", "fcntype": "script", "name": "entity é"}],
    "appthumbnail": {"fileref": "file Ã©", "alt": "alt é"},
    "syntaxgroup": [{"syntaxtype": "command", "title": "title é", "syntax": ["s1 Ã©", "s2"]}],
    "inputgroup": [
        {"title": "title é", "inputs": [{"htmlid": "f.html#in Ã©", "name": "name Ã©",
            "purpose": "purpose é", "value": ["v1 é", "v2"], "syntaxtype": "creation",
            "defaultvalue": "default é", "isNameValuePair": false}]},
        {"title": "pairs", "inputs": [{"htmlid": "f.html#", "name": "pair Ã©", "purpose": "",
            "value": [], "syntaxtype": "plain", "defaultvalue": "", "isNameValuePair": true}]},
        {"title": "empty", "inputs": []},
        {"title": "last", "inputs": []}],
    "outputs": [{"htmlid": "f.html#out Ã©", "name": "name é", "purpose": "purpose é",
        "value": ["v1 é", "v2"], "syntaxtype": "function"}],
    "classpropertygroup": [{"title": "title é", "classproperty": [{"name": "Color Ã©",
        "htmlid": "f.html#prop_Color Ã©", "purpose": "purpose é", "value": ["v1 é", "v2"],
        "defaultvalue": "default é"}]}],
    "seealso": [{"url": "url Ã©", "name": "name é"}],
    "examples": [{"url": "url Ã©", "open_command": "open Ã©", "title": "title é"}],
    "parameters": [{"htmlid": "f.html#par Ã©", "name": "name é", "purpose": "purpose é",
        "value": ["v1 é", "v2"], "defaultvalue": "default é"}]}]}}
})");

const json::value kLookup = json::parse(R"({
    "productName": "P", "baseCode": "B", "helpFolder": "main", "helpLocation": "L", "other": 1,
    "refItems": [{"name": "name é", "refpurpose": "purpose é", "href": "href é",
                  "type": "command", "fcntype": "static", "deprecated": false}],
    "supportPackages": [
        {"productName": "1", "baseCode": "one", "helpFolder": "main", "helpLocation": "",
         "refItems": [], "supportPackages": 7},
        {"productName": "2", "baseCode": "two", "helpFolder": "", "helpLocation": "",
         "refItems": [{"name": "n", "refpurpose": "p1", "href": "h"},
                      {"name": "a", "refpurpose": "p2", "href": "h"},
                      {"name": "n", "refpurpose": "p3", "href": ""}]}]
})");

const json::value kLookupRead = json::parse(R"({
    "main": {"productName": "P", "baseCode": "B", "helpFolder": "main", "helpLocation": "L",
        "refItems": {"name é": [{"name": "name é", "refpurpose": "purpose é", "href": "href Ã©",
            "type": "command", "fcntype": "static", "deprecated": true}]}},
    "one": {"productName": "1", "baseCode": "one", "helpFolder": "main", "helpLocation": "",
        "refItems": {}},
    "two": {"productName": "2", "baseCode": "two", "helpFolder": "", "helpLocation": "",
        "refItems": {
            "a": [{"name": "a", "refpurpose": "p2", "href": "h", "type": "unknown",
                   "fcntype": "unspecified", "deprecated": false}],
            "n": [{"name": "n", "refpurpose": "p1", "href": "h", "type": "unknown",
                   "fcntype": "unspecified", "deprecated": false},
                  {"name": "n", "refpurpose": "p3", "href": "", "type": "unknown",
                   "fcntype": "unspecified", "deprecated": false}]}}
})");

/// The records of a resource, or nothing when it is refused.
template <typename T>
std::optional<json::object> read(const json::value& resource) {
    try {
        return describe(parseReferenceResource<T>(json::serialize(resource)));
    } catch (const DocParserException&) {
        return std::nullopt;
    }
}

template <typename T>
void expectAsModelled(const json::value& resource) {
    EXPECT_EQ(read<T>(resource), testsupport::expectedResource<T>(resource)) << resource;
}

TEST(ResourceFormatTest, EveryMemberIsReadAndNoOther) {
    EXPECT_EQ(read<RefItem>(kReference), kReferenceRead.as_object());
    EXPECT_EQ(read<RefItemLookup>(kLookup), kLookupRead.as_object());
    const auto documents = parseReferenceResource<RefItem>(json::serialize(kReference));
    const RefItem& item = documents.begin()->second.items.begin()->second.front();
    EXPECT_EQ(item.hostValues, (std::array<KvArrayHandle, 10>()));
}

/// Leaves out each member in turn, and replaces each value by others.
template <typename T>
void expectMutationsAsModelled(const json::value& resource) {
    const json::value others = json::parse(R"([null, true, 7, 0.5, "", "Class", "removed ", "app",
                                               "static", [], [""], {}, {"name": "x"}])");
    std::vector<std::string> pointers = testsupport::allPointers(resource);
    for (const std::string& pointer : pointers)
        if (!testsupport::isListElement(pointer))
            expectAsModelled<T>(withoutMember(resource, pointer));
    pointers.emplace_back();
    for (const std::string& pointer : pointers)
        for (const json::value& other : others.as_array())
            expectAsModelled<T>(withValue(resource, pointer, other));
}

TEST(ResourceFormatTest, AnyOtherMemberIsRefusedOrGivesADefault) {
    expectMutationsAsModelled<RefItem>(kReference);
    expectMutationsAsModelled<RefItemLookup>(kLookup);
    // Sound as a full reference file, too.
    expectMutationsAsModelled<RefItem>(kLookup);
}

TEST(ResourceFormatTest, OfDocumentsWithOneKeyTheFirstStays) {
    const std::array<const char*, 4> keys{"a", "b", "", "é"};
    for (const char* folder : keys)
        for (const char* first : keys)
            for (const char* second : keys) {
                json::value resource = withValue(kLookup, "/helpFolder", folder);
                resource = withValue(resource, "/supportPackages/0/baseCode", first);
                resource = withValue(resource, "/supportPackages/1/baseCode", second);
                expectAsModelled<RefItemLookup>(resource);
                expectAsModelled<RefItem>(resource);
            }
}

TEST(ResourceFormatTest, OnlyAppsHaveUtf8ArgumentNames) {
    const std::pair<const char*, const char16_t*> rows[] = {
        {R"([])", u"name Ã©"},
        {R"([{"name": "x", "type": "function", "fcntype": "app"}])", u"name Ã©"},
        {R"([{"name": "x", "type": "APP"}, {"name": "app"}])", u"name Ã©"},
        {R"([{"name": "x", "type": "app"}])", u"name é"},
        {R"([{"name": "x"}, {"name": "y", "type": "app"}, {"name": "z"}])", u"name é"},
    };
    for (const auto& [entities, name] : rows) {
        const json::value resource =
            withValue(kReference, "/refItems/0/refentity", json::parse(entities));
        expectAsModelled<RefItem>(resource);
        const auto documents = parseReferenceResource<RefItem>(json::serialize(resource));
        const RefItem& item = documents.begin()->second.items.begin()->second.front();
        EXPECT_EQ(item.inputGroups.front().inputs.front().info.name, name) << entities;
    }
}

// If each holder moved all groups before it, this would run into the time limit.
TEST(ResourceFormatTest, ManyHoldersOfNameValuePairsAreNoBurden) {
    const json::value pairs =
        json::parse(R"({"namevaluepairs": [{"title": "t"}, {"title": "t"}]})");
    const json::value resource =
        withValue(kReference, "/refItems/0/inputgroup", json::array(200'000, pairs));
    const auto documents = parseReferenceResource<RefItem>(json::serialize(resource));
    const RefItem& item = documents.begin()->second.items.begin()->second.front();
    EXPECT_EQ(item.inputGroups.size(), 400'000U);
}

TEST(ResourceFormatTest, MembersOfALookupMayComeInEveryOrderAmongOthers) {
    const json::object& lookup = kLookup.at_pointer("/refItems/0").as_object();
    const std::vector<json::key_value_pair> members(lookup.begin(), lookup.end());
    std::vector<std::size_t> order{0, 1, 2, 3, 4, 5};
    do {
        json::object item{{"nam", "other"}, {"typeof", 1}};
        for (const std::size_t number : order)
            item.emplace(members[number].key(), members[number].value());
        // With so many members Boost.JSON finds them by their hashes.
        for (int number = 0; number < 40; ++number)
            item["other" + std::to_string(number)] = "x";
        EXPECT_EQ(read<RefItemLookup>(withValue(kLookup, "/refItems/0", item)),
                  kLookupRead.as_object())
            << item;
    } while (std::next_permutation(order.begin(), order.end()));
}

} // namespace
} // namespace reference::docparser
