#include <array>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>
#include <gtest/gtest.h>

#include "reference/docparser/DocParserException.hpp"
#include "reference/docparser/RefItem.hpp"
#include "resources/ReferenceResource.hpp"
#include "support/JsonMutations.hpp"
#include "support/RefItemDescription.hpp"

namespace reference::docparser {
namespace {

namespace json = boost::json;
using testsupport::allPointers;
using testsupport::describe;
using testsupport::valuesOfOtherKinds;
using testsupport::withoutMember;
using testsupport::withValue;

// Most texts hold a letter that comes out differently by the two conversions.
const json::value kItem = json::parse(R"({
    "href": "f.html", "refpurpose": "purpose é", "packagename": "package é", "introduced": "R1 é",
    "description": "description é", "deprecationstatus": "removed",
    "refentity": [{"type": "class", "fcntype": "script", "name": "entity é"}],
    "appthumbnail": {"fileref": "file é", "alt": "alt é"},
    "syntaxgroup": [{"syntaxtype": "command", "title": "title é", "syntax": ["s1 é", "s2"]}],
    "inputgroup": [{"title": "title é", "inputs": [{"htmlid": "in é", "name": "name é",
        "purpose": "purpose é", "value": ["v1 é", "v2"], "syntaxtype": "creation",
        "defaultvalue": "default é"}]}],
    "outputs": [{"htmlid": "out é", "name": "name é", "purpose": "purpose é",
        "value": ["v1 é", "v2"], "syntaxtype": "function"}],
    "classpropertygroup": [{"title": "title é", "classproperty": [{"name": "Color é",
        "purpose": "purpose é", "value": ["v1 é", "v2"], "defaultvalue": "default é"}]}],
    "seealso": [{"url": "url é", "name": "name é"}],
    "examples": [{"url": "url é", "open_command": "open é", "title": "title é"}],
    "parameters": [{"htmlid": "par é", "name": "name é", "purpose": "purpose é",
        "value": ["v1 é", "v2"], "defaultvalue": "default é"}]
})");

const json::value kRecord = json::parse(R"({
    "href": "f.html", "refpurpose": "purpose é", "packagename": "package Ã©",
    "introduced": "R1 Ã©", "description": "description é", "deprecationstatus": "removed",
    "refentity": [{"type": "class", "fcntype": "script", "name": "entity é"}],
    "appthumbnail": {"fileref": "file Ã©", "alt": "alt é"},
    "syntaxgroup": [{"syntaxtype": "command", "title": "title é", "syntax": ["s1 Ã©", "s2"]}],
    "inputgroup": [{"title": "title é", "inputs": [{"htmlid": "f.html#in Ã©", "name": "name Ã©",
        "purpose": "purpose é", "value": ["v1 é", "v2"], "syntaxtype": "creation",
        "defaultvalue": "default é", "isNameValuePair": false}]}],
    "outputs": [{"htmlid": "f.html#out Ã©", "name": "name é", "purpose": "purpose é",
        "value": ["v1 é", "v2"], "syntaxtype": "function"}],
    "classpropertygroup": [{"title": "title é", "classproperty": [{"name": "Color Ã©",
        "htmlid": "f.html#prop_Color Ã©", "purpose": "purpose é", "value": ["v1 é", "v2"],
        "defaultvalue": "default é"}]}],
    "seealso": [{"url": "url Ã©", "name": "name é"}],
    "examples": [{"url": "url Ã©", "open_command": "open Ã©", "title": "title é"}],
    "parameters": [{"htmlid": "f.html#par Ã©", "name": "name é", "purpose": "purpose é",
        "value": ["v1 é", "v2"], "defaultvalue": "default é"}]
})");

// All other members are optional.
const std::set<std::string> kRequired = {"/href",
                                         "/refpurpose",
                                         "/refentity/0/name",
                                         "/appthumbnail/fileref",
                                         "/appthumbnail/alt",
                                         "/syntaxgroup/0/title",
                                         "/syntaxgroup/0/syntax",
                                         "/inputgroup/0/title",
                                         "/inputgroup/0/inputs/0/name",
                                         "/inputgroup/0/inputs/0/purpose",
                                         "/outputs/0/name",
                                         "/outputs/0/purpose",
                                         "/classpropertygroup/0/classproperty",
                                         "/classpropertygroup/0/classproperty/0/name",
                                         "/classpropertygroup/0/classproperty/0/purpose",
                                         "/seealso/0/url",
                                         "/seealso/0/name",
                                         "/examples/0/url",
                                         "/examples/0/title",
                                         "/parameters/0/name",
                                         "/parameters/0/purpose"};

const std::map<std::string, json::value> kDefaultsOfEnumerations = {
    {"/refentity/0/type", "unknown"},
    {"/refentity/0/fcntype", "unspecified"},
    {"/deprecationstatus", "none"},
    {"/syntaxgroup/0/syntaxtype", "plain"},
    {"/inputgroup/0/inputs/0/syntaxtype", "plain"},
    {"/outputs/0/syntaxtype", "plain"},
};

json::value defaultOf(const std::string& pointer) {
    if (const auto found = kDefaultsOfEnumerations.find(pointer);
        found != kDefaultsOfEnumerations.end())
        return found->second;
    if (pointer.ends_with("/htmlid"))
        return "f.html#";
    if (pointer == "/appthumbnail")
        return {{"fileref", ""}, {"alt", ""}};
    return kItem.at_pointer(pointer).is_array() ? json::value(json::array()) : json::value("");
}

using Items = std::map<std::u16string, std::vector<RefItem>>;

Items parseItems(const json::array& items) {
    const json::value document = {{"productName", ""},
                                  {"baseCode", ""},
                                  {"helpFolder", "folder"},
                                  {"helpLocation", ""},
                                  {"refItems", items}};
    return parseReferenceResource<RefItem>(json::serialize(document)).at(u"folder").items;
}

json::value parseItem(const json::value& item) {
    return describe(parseItems(json::array(1, item)).at(u"f.html").at(0));
}

bool isRefused(const json::value& item) {
    try {
        parseItem(item);
    } catch (const DocParserException&) {
        return true;
    }
    return false;
}

TEST(ReferenceItemTest, ReadsEveryMemberAndNoOther) {
    const Items items = parseItems(json::array(1, kItem));
    EXPECT_EQ(describe(items.at(u"f.html").at(0)), kRecord);
    EXPECT_EQ(items.at(u"f.html").at(0).hostValues, (std::array<KvArrayHandle, 10>()));
    json::value item = kItem;
    for (const char* owner : {"", "/refentity/0", "/appthumbnail", "/inputgroup/0", "/outputs/0"})
        item.at_pointer(owner).as_object()["unknown"] = 1;
    EXPECT_EQ(parseItem(item), kRecord);
}

TEST(ReferenceItemTest, AbsentMembersAreRefusedOrGiveDefaults) {
    for (const std::string& pointer : allPointers(kItem)) {
        if (testsupport::isListElement(pointer))
            continue;
        const json::value item = withoutMember(kItem, pointer);
        if (kRequired.contains(pointer))
            EXPECT_TRUE(isRefused(item)) << pointer;
        else
            EXPECT_EQ(parseItem(item), withValue(kRecord, pointer, defaultOf(pointer))) << pointer;
    }
}

TEST(ReferenceItemTest, EmptyTextsAndListsAreKept) {
    for (const std::string& pointer : allPointers(kItem)) {
        const bool isPartOfLinks = pointer == "/href" || pointer.ends_with("classproperty/0/name");
        if (isPartOfLinks || kItem.at_pointer(pointer).is_object())
            continue;
        const bool isList = kItem.at_pointer(pointer).is_array();
        const json::value empty = isList ? json::value(json::array()) : json::value("");
        EXPECT_EQ(parseItem(withValue(kItem, pointer, empty)),
                  withValue(kRecord, pointer, defaultOf(pointer)))
            << pointer;
    }
}

TEST(ReferenceItemTest, MembersAndElementsOfAnotherKindAreRefused) {
    for (const std::string& pointer : allPointers(kItem)) {
        if (kDefaultsOfEnumerations.contains(pointer))
            continue;
        for (const json::value& other : valuesOfOtherKinds(kItem.at_pointer(pointer)))
            EXPECT_TRUE(isRefused(withValue(kItem, pointer, other))) << pointer << ": " << other;
    }
    for (const json::value& other : valuesOfOtherKinds(kItem))
        EXPECT_TRUE(isRefused(other)) << other;
}

TEST(ReferenceItemTest, UnknownEnumerationValuesGiveDefaults) {
    std::vector<json::value> unknown = valuesOfOtherKinds("text");
    for (const char* text : {"", "no such text", "Class", "removed ", "COMMAND"})
        unknown.emplace_back(text);
    for (const auto& [pointer, value] : kDefaultsOfEnumerations) {
        for (const json::value& other : unknown)
            EXPECT_EQ(parseItem(withValue(kItem, pointer, other)),
                      withValue(kRecord, pointer, value))
                << pointer << ": " << other;
    }
}

TEST(ReferenceItemTest, NameValuePairsTakeThePlaceOfTheirHolder) {
    const json::value item = withValue(kItem, "/inputgroup", json::parse(R"([
        {"title": "A", "inputs": [{"name": "a", "purpose": ""}]},
        {"title": 1, "inputs": 2, "namevaluepairs": [
            {"title": "B", "inputs": [{"name": "b", "purpose": ""}, {"name": "c", "purpose": ""}]},
            {"title": "C", "namevaluepairs": 3}]},
        {"namevaluepairs": []},
        {"title": "D", "inputs": [{"name": "d", "purpose": ""}]}])"));
    std::u16string groups;
    const Items items = parseItems(json::array(1, item));
    for (const InputGroup& group : items.at(u"f.html").at(0).inputGroups) {
        groups += group.title + u':';
        for (const InputArgument& input : group.inputs)
            groups += input.info.name + (input.isNameValuePair ? u'+' : u'-');
        groups += u' ';
    }
    EXPECT_EQ(groups, u"A:a- B:b+c+ C: D:d- ");

    const std::string pairs = "/inputgroup/1/namevaluepairs";
    EXPECT_TRUE(isRefused(withoutMember(item, pairs + "/1/title")));
    for (const std::string& pointer : {pairs, pairs + "/0", pairs + "/0/inputs/1"}) {
        for (const json::value& other : valuesOfOtherKinds(item.at_pointer(pointer)))
            EXPECT_TRUE(isRefused(withValue(item, pointer, other))) << pointer << ": " << other;
    }
}

// Where each holder made all groups before it move, this would run into the time limit.
TEST(ReferenceItemTest, ManyHoldersOfNameValuePairsAreNoBurden) {
    const json::value pairs =
        json::parse(R"({"namevaluepairs": [{"title": "t"}, {"title": "t"}]})");
    const json::value item = withValue(kItem, "/inputgroup", json::array(200'000, pairs));
    EXPECT_EQ(parseItems(json::array(1, item)).at(u"f.html").at(0).inputGroups.size(), 400'000U);
}

TEST(ReferenceItemTest, OnlyAppsHaveUtf8ArgumentNames) {
    const std::pair<const char*, bool> cases[] = {
        {R"([])", false},
        {R"([{"name": "x", "type": "function", "fcntype": "app"}])", false},
        {R"([{"name": "x", "type": "APP"}, {"name": "app"}])", false},
        {R"([{"name": "x", "type": "app"}])", true},
        {R"([{"name": "x"}, {"name": "y", "type": "app"}, {"name": "z"}])", true},
    };
    for (const auto& [entities, isApp] : cases) {
        const json::value item = withValue(kItem, "/refentity", json::parse(entities));
        json::value expected = kRecord;
        if (isApp) {
            expected.at_pointer("/inputgroup/0/inputs/0/name") = "name é";
            json::value& property = expected.at_pointer("/classpropertygroup/0/classproperty/0");
            property.as_object()["name"] = "Color é";
            property.as_object()["htmlid"] = "f.html#prop_Color é";
        }
        const json::value record = parseItem(item);
        EXPECT_EQ(withValue(record, "/refentity", kRecord.at("refentity")), expected) << entities;
    }
}

TEST(ReferenceItemTest, ItemsAreGroupedByHrefInDocumentOrder) {
    const json::value document = json::parse(R"([
        {"href": "m", "refpurpose": "1"}, {"href": "z", "refpurpose": "2"},
        {"href": "a", "refpurpose": "3"}, {"href": "m", "refpurpose": "4"},
        {"href": "", "refpurpose": "5"}, {"href": "m", "refpurpose": "6"}])");
    std::u16string groups;
    for (const auto& [href, group] : parseItems(document.as_array())) {
        groups += href + u':';
        for (const RefItem& item : group)
            groups += item.refPurpose;
        groups += u' ';
    }
    EXPECT_EQ(groups, u":5 a:3 m:146 z:2 ");
}

} // namespace
} // namespace reference::docparser
