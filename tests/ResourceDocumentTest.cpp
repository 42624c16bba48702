#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>
#include <boost/system/system_error.hpp>
#include <gtest/gtest.h>

#include "environment/PathAndText.hpp"
#include "environment/ReferenceProperty.hpp"
#include "reference/docparser/DocParserException.hpp"
#include "reference/docparser/RefItem.hpp"
#include "resources/ReferenceResource.hpp"
#include "support/JsonMutations.hpp"

namespace reference::docparser {
namespace {

namespace json = boost::json;
using fl::i18n::to_string;
using reference::property::FunctionType;
using reference::property::RefEntityType;
using reference::property::RefItemLookup;
using testsupport::valuesOfOtherKinds;
using testsupport::withoutMember;
using testsupport::withValue;

// Sound as a lookup file and as a full reference file alike.
const json::value kResource = json::parse(R"({
    "productName": "P", "baseCode": "B", "helpFolder": "main", "helpLocation": "L", "other": 1,
    "refItems": [{"name": "n", "refpurpose": "p", "href": "h"}],
    "supportPackages": [
        {"productName": "", "baseCode": "one", "helpFolder": "main", "helpLocation": "",
         "refItems": [], "supportPackages": 7},
        {"productName": "", "baseCode": "two", "helpFolder": "", "helpLocation": "",
         "refItems": [{"name": "n", "refpurpose": "p", "href": "h"}]}]
})");

template <typename T>
class ResourceFrameTest : public testing::Test {
protected:
    static ParsedResource<T> parse(const json::value& resource) {
        return parseReferenceResource<T>(json::serialize(resource));
    }

    // "key:product name" of each document.
    static std::string documents(const json::value& resource) {
        std::string text;
        for (const auto& [key, document] : parse(resource))
            text += to_string(key) + ':' + to_string(document.header.getProductName()) + ' ';
        return text;
    }
};

using ItemRecords = testing::Types<RefItemLookup, RefItem>;
TYPED_TEST_SUITE(ResourceFrameTest, ItemRecords);

TYPED_TEST(ResourceFrameTest, MapsTheProductAndItsSupportPackages) {
    const auto resource = this->parse(kResource);
    ASSERT_EQ(this->documents(kResource), "main:P one: two: ");
    EXPECT_EQ(resource.at(u"main").header.getHelpLocation(), u"L");
    EXPECT_EQ(resource.at(u"main").items.size(), 1U);
    EXPECT_EQ(resource.at(u"one").items.size(), 0U);
    EXPECT_EQ(resource.at(u"two").items.size(), 1U);
    for (const json::value& none : {withoutMember(kResource, "/supportPackages"),
                                    withValue(kResource, "/supportPackages", json::array())})
        EXPECT_EQ(this->documents(none), "main:P ");
}

TYPED_TEST(ResourceFrameTest, OfDocumentsWithOneKeyTheFirstStays) {
    struct Case {
        const char *folder, *first, *second, *documents;
    };
    for (const auto& [folder, first, second, documents] : {
             Case{"a", "a", "b", "a:P b:2 "},
             Case{"b", "a", "a", "a:1 b:P "},
             Case{"a", "a", "a", "a:P "},
             Case{"", "", "é", ":P Ã©:2 "},
         }) {
        json::value resource = withValue(kResource, "/helpFolder", folder);
        resource = withValue(resource, "/supportPackages/0/baseCode", first);
        resource = withValue(resource, "/supportPackages/0/productName", "1");
        resource = withValue(resource, "/supportPackages/1/baseCode", second);
        resource = withValue(resource, "/supportPackages/1/productName", "2");
        EXPECT_EQ(this->documents(resource), documents) << folder << first << second;
    }
}

TYPED_TEST(ResourceFrameTest, OneBrokenDocumentLosesTheFile) {
    for (const std::string document : {"", "/supportPackages/1"}) {
        for (const char* member : {"/productName", "/baseCode", "/helpFolder", "/helpLocation",
                                   "/refItems", "/refItems/0/href", "/refItems/0/refpurpose"}) {
            const std::string pointer = document + member;
            EXPECT_THROW(this->parse(withoutMember(kResource, pointer)), DocParserException)
                << pointer;
        }
    }
}

TYPED_TEST(ResourceFrameTest, RefusesOtherKinds) {
    for (const char* pointer :
         {"", "/baseCode", "/refItems", "/refItems/0", "/refItems/0/href", "/supportPackages",
          "/supportPackages/0", "/supportPackages/1/baseCode", "/supportPackages/1/refItems",
          "/supportPackages/1/refItems/0", "/supportPackages/1/refItems/0/refpurpose"}) {
        for (const json::value& other : valuesOfOtherKinds(kResource.at_pointer(pointer)))
            EXPECT_THROW(this->parse(withValue(kResource, pointer, other)), DocParserException)
                << pointer << ": " << other;
    }
}

TYPED_TEST(ResourceFrameTest, ParsesStrictJsonOnly) {
    const std::string sound = json::serialize(kResource);
    const auto withMember = [&](const std::string& member) {
        return '{' + member + ',' + sound.substr(1);
    };
    // The document itself is the first of the 32 levels.
    const auto nested = [](std::size_t depth) {
        return "\"x\":" + std::string(depth, '[') + std::string(depth, ']');
    };
    for (const std::string& text :
         {" \t\r\n" + sound + "\n", withMember(nested(31)), withMember("\"x\":\"\\ud83d\\ude00\""),
          withMember("\"helpFolder\":0")})
        EXPECT_NO_THROW(parseReferenceResource<TypeParam>(text)) << text;
    for (const std::string& text :
         {std::string(), std::string(" "), sound + "x", sound + std::string(1, '\0'),
          sound.substr(0, sound.size() - 1), "\xEF\xBB\xBF" + sound, withMember(nested(32)),
          withMember("\"x\":[1,]"), withMember("\"x\":1,"), withMember("/**/\"x\":1"),
          withMember("\"x\":\"\xC3\""), withMember("\"x\":\"\xED\xA0\x80\""),
          withMember("\"x\":\"\\ud83d\""), withMember("\"x\":\"\n\""), withMember("\"x\":NaN"),
          std::string(100000, '[')})
        EXPECT_THROW(parseReferenceResource<TypeParam>(text), boost::system::system_error) << text;
}

const json::value kLookup = json::parse(R"({"name": "name é", "refpurpose": "purpose é",
    "href": "href é", "type": "command", "fcntype": "static", "deprecated": false})");

RefItemLookup parseLookup(const json::value& item) {
    const json::value resource = withValue(kResource, "/refItems/0", item);
    const auto parsed = parseReferenceResource<RefItemLookup>(json::serialize(resource));
    return parsed.at(u"main").items.begin()->second.at(0);
}

std::string describe(const RefItemLookup& lookup) {
    return to_string(lookup.getName()) + '|' + to_string(lookup.getPurpose()) + '|' +
           to_string(lookup.getHref()) + '|' + std::string(lookup.getEntityType().toString()) +
           '|' + std::string(lookup.getFunctionType().toString()) +
           (lookup.isDeprecated() ? "|deprecated" : "");
}

TEST(LookupItemTest, ReadsEveryMember) {
    const RefItemLookup lookup = parseLookup(kLookup);
    EXPECT_EQ(lookup.getName(), u"name é");
    EXPECT_EQ(lookup.getPurpose(), u"purpose é");
    EXPECT_EQ(lookup.getHref(), u"href \u00C3\u00A9");
    EXPECT_EQ(lookup.getEntityType(), RefEntityType::Command);
    EXPECT_EQ(lookup.getFunctionType(), FunctionType::Static);
    EXPECT_FALSE(parseLookup(withoutMember(kLookup, "/deprecated")).isDeprecated());
    for (const json::value& value : valuesOfOtherKinds("text"))
        EXPECT_TRUE(parseLookup(withValue(kLookup, "/deprecated", value)).isDeprecated()) << value;
}

TEST(LookupItemTest, FindsMembersInEveryOrderAmongOthers) {
    std::string others; // with these Boost.JSON finds members by their hashes
    for (int number = 0; number < 40; ++number)
        others += ",\"other" + std::to_string(number) + "\":\"x\"";
    std::vector<json::key_value_pair> members(kLookup.as_object().begin(),
                                              kLookup.as_object().end());
    std::vector<std::size_t> order{0, 1, 2, 3, 4, 5};
    do {
        json::object item{{"nam", "other"}, {"typeof", 1}};
        for (const std::size_t number : order)
            item.emplace(members[number].key(), members[number].value());
        std::string text = json::serialize(item);
        text.insert(text.size() - 1, others);
        EXPECT_EQ(describe(parseLookup(json::parse(text))), describe(parseLookup(kLookup))) << text;
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST(LookupItemTest, RequiresItsTexts) {
    for (const char* pointer : {"/name", "/refpurpose", "/href"}) {
        EXPECT_NO_THROW(parseLookup(withValue(kLookup, pointer, ""))) << pointer;
        EXPECT_THROW(parseLookup(withoutMember(kLookup, pointer)), DocParserException) << pointer;
        for (const json::value& other : valuesOfOtherKinds("text"))
            EXPECT_THROW(parseLookup(withValue(kLookup, pointer, other)), DocParserException)
                << pointer << ": " << other;
    }
}

TEST(LookupItemTest, EnumerationsFallBackToTheirDefaults) {
    std::vector<json::value> items{withoutMember(withoutMember(kLookup, "/type"), "/fcntype")};
    std::vector<json::value> unknown = valuesOfOtherKinds("text");
    for (const char* text : {"", "Command", "static "})
        unknown.emplace_back(text);
    for (const json::value& value : unknown)
        items.push_back(withValue(withValue(kLookup, "/type", value), "/fcntype", value));
    for (const json::value& item : items) {
        EXPECT_EQ(parseLookup(item).getEntityType(), RefEntityType::Unknown) << item;
        EXPECT_EQ(parseLookup(item).getFunctionType(), FunctionType::Unspecified) << item;
    }
}

TEST(LookupItemTest, ItemsAreGroupedByNameInDocumentOrder) {
    const json::value resource = withValue(kResource, "/refItems", json::parse(R"([
        {"name": "m", "refpurpose": "1", "href": "z"}, {"name": "a", "refpurpose": "2", "href": ""},
        {"name": "m", "refpurpose": "3", "href": "a"}, {"name": "", "refpurpose": "4", "href": ""}
    ])"));
    std::string groups;
    const auto parsed = parseReferenceResource<RefItemLookup>(json::serialize(resource));
    for (const auto& [name, lookups] : parsed.at(u"main").items) {
        groups += to_string(name) + ':';
        for (const RefItemLookup& lookup : lookups)
            groups += to_string(lookup.getPurpose());
        groups += ' ';
    }
    EXPECT_EQ(groups, ":4 a:2 m:13 ");
}

} // namespace
} // namespace reference::docparser
