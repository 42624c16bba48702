#include <string>
#include <vector>

#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>
#include <gtest/gtest.h>

#include "environment/Services.hpp"
#include "reference/docparser/DocParserException.hpp"
#include "reference/docparser/ParsingTools.hpp"
#include "support/JsonMutations.hpp"
#include "support/ScopedServices.hpp"

namespace reference::docparser::DocResourceParser::ParsingTools {
namespace {

namespace json = boost::json;
using namespace std::string_literals;
using testsupport::ScopedServices;
using testsupport::valuesOfOtherKinds;

constexpr auto kAscii = StringParsingType::Ascii;
constexpr auto kUtf8 = StringParsingType::Utf8;

TEST(MemberAccessTest, FindsExactlyTheNamedMember) {
    const json::object object =
        json::parse(R"({"name": "é", "empty": "", "name": "ü", "": "x"})").as_object();
    EXPECT_EQ(getFluString(object, "name", kUtf8), u"ü") << "the last of two counts";
    EXPECT_EQ(getFluString(object, "name", kAscii), u"\u00C3\u00BC");
    EXPECT_EQ(getFluStringWithFallback(object, "name", kUtf8), u"ü");
    EXPECT_EQ(getFluStringWithFallback(object, "name", kAscii), u"\u00C3\u00BC");
    EXPECT_EQ(getFluString(object, "empty", kUtf8), u"");
    EXPECT_EQ(getFluString(object, "", kUtf8), u"x");
    for (const std::string& key : {"Name"s, "nam"s, "name "s, "name\0"s}) {
        EXPECT_THROW(getFluString(object, key, kUtf8), DocParserException) << key;
        EXPECT_EQ(getFluStringWithFallback(object, key, kUtf8), u"") << key;
    }
}

TEST(MemberAccessTest, RefusesOtherKinds) {
    for (const json::value& other : valuesOfOtherKinds("text")) {
        const json::object object{{"key", other}};
        EXPECT_THROW(getFluString(other, kAscii), DocParserException) << other;
        EXPECT_THROW(getFluString(object, "key", kUtf8), DocParserException) << other;
        EXPECT_THROW(getFluStringWithFallback(object, "key", kUtf8), DocParserException) << other;
    }
    for (const json::value& other : valuesOfOtherKinds(json::array())) {
        EXPECT_THROW(getJsonArray(other), DocParserException) << other;
        EXPECT_THROW(getJsonArray({{"key", other}}, "key"), DocParserException) << other;
    }
    for (const json::value& other : valuesOfOtherKinds(json::object()))
        EXPECT_THROW(getJsonArray(other, "key"), DocParserException) << other;
    EXPECT_THROW(getJsonArray(json::object(), "key"), DocParserException);
}

TEST(MemberAccessTest, ArraysAreViewsIntoTheDocument) {
    const json::value document = json::parse(R"({"list": [1, 2], "empty": []})");
    const json::value& list = document.at("list");
    EXPECT_EQ(&getJsonArray(list), &list.as_array());
    EXPECT_EQ(&getJsonArray(document, "list"), &list.as_array());
    EXPECT_EQ(getJsonArray(document, "empty").size(), 0U);
}

using Locales = std::vector<std::u16string>;

TEST(DocLocalesTest, EveryLocaleButEnglishBecomesASuffix) {
    const std::pair<Locales, Locales> cases[] = {
        {{u"en", u"xx", u"en", u"yy"}, {u"_xx", u"_yy"}},
        {{u"ja", u"de"}, {u"_ja", u"_de"}},
        {{u"EN", u"en_US", u"", u"e"}, {u"_EN", u"_en_US", u"_", u"_e"}},
        {{u"en"}, {}},
        {{}, {}},
    };
    for (const auto& [supported, suffixes] : cases) {
        environment::Services services;
        services.supportedDocLanguages = [&languages = supported] { return languages; };
        const ScopedServices scope(services);
        EXPECT_EQ(getSupportedDocLocales(), suffixes) << testing::PrintToString(supported);
    }
}

} // namespace
} // namespace reference::docparser::DocResourceParser::ParsingTools
