#include <algorithm>
#include <cstddef>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "environment/ReferenceProperty.hpp"
#include "refdoc/Schemas.hpp"
#include "refdoc/check/findings/Finding.hpp"
#include "refdoc/format/JsonPositions.hpp"
#include "refdoc/host/HostSetup.hpp"
#include "refdoc/terminal/Progress.hpp"
#include "support/RefdocCheckFixture.hpp"

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testsupport::ProcessResult;
using testsupport::RefdocCheck;
using testsupport::withItems;

TEST_F(RefdocCheck, CountsFurtherFindingsOfAKind) {
    std::string items = R"({"name": 1, "refpurpose": "p", "href": "a.html"})";
    for (int i = 0; i < 999; ++i)
        items += R"(, {"name": 1, "refpurpose": "p", "href": "a.html"})";
    root_.lookupFile("alpha.json", withItems(items));
    EXPECT_THAT(refdoc({"check"}).output,
                AllOf(HasSubstr("(/refItems/19/name)\n"),
                      HasSubstr("alpha.json: error: 980 more of wrong-kind\n"),
                      HasSubstr("\n\n1000 errors, 0 warnings and 0 notes in 2 files\n")));
    const std::string lines = refdoc({"check", "--json"}).output;
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), 1000);
    EXPECT_THAT(lines, HasSubstr("/refItems/999/name"));
}

TEST_F(RefdocCheck, StylesLevelsOnTerminals) {
    root_.lookupFile("alpha.json",
                     withItems(R"({"name": "a\u001b[2J\nb", "refpurpose": 1, "href": ""})"));
    EXPECT_THAT(onTerminal({"check"}).output, HasSubstr(": \x1b[1merror\x1b[m: a\uFFFD[2J b: "));
}

TEST_F(RefdocCheck, AcceptsTheExamplesOfTheManual) {
    std::ifstream file(DOCPARSER_FORMATS_DOCUMENT);
    const std::string page{std::istreambuf_iterator<char>(file), {}};
    const auto example = [&page](const std::string& kind) {
        const std::string fence = "```json " + kind + '\n';
        const std::size_t first = page.find(fence) + fence.size();
        return page.substr(first, page.find("```", first) - first);
    };
    root_.lookupFile("alpha.json", example("lookup"));
    root_.referenceFile("alpha.json", example("reference"));
    EXPECT_EQ(findings({"--level", "error"}), "");
    EXPECT_EQ(refdoc({"check"}).exitCode, 0);
}

/// Very long names in a great number of faults.
TEST_F(RefdocCheck, LimitsWhatItKeepsOfHostileFiles) {
    const std::string longName(20000, 'n');
    std::string members;
    for (int i = 0; i < 2000; ++i)
        members += ", \"a\": 1";
    root_.lookupFile("alpha.json",
                     withItems("", ", \"" + longName + "\": {\"a\": 1" + members + "}"));
    const std::string output = refdoc({"check", "--json"}).output;
    EXPECT_LT(output.size(), std::size_t{16} << 20);
    EXPECT_THAT(output, HasSubstr("\"further\":"));
    EXPECT_THAT(refdoc({"check"}).output,
                HasSubstr("\n0 errors, 2000 warnings and 0 notes in 2 files"));
}

TEST(RootFindings, LimitsWhatItKeeps) {
    using namespace refdoc;
    const std::string longText(std::size_t{1} << 20, 'm');
    RootFindings root;
    for (int i = 40; i > 0; --i)
        root.add({{.fault = Fault::DeadLink,
                   .level = Level::Warning,
                   .file = "f",
                   .message = longText}});
    root.add({{.fault = Fault::NotJson,
               .level = Level::Error,
               .file = "e",
               .message = "m",
               .further = 3}});
    const std::string huge = longText + longText;
    root.add(
        {{.fault = Fault::RepeatedMember, .level = Level::Warning, .file = "g", .message = huge}});
    root.add({{.fault = Fault::NotJson, .level = Level::Error, .file = "h", .message = "m"}});
    const std::vector<Finding> kept = root.take();
    ASSERT_EQ(kept.size(), 35u);
    EXPECT_EQ(kept[0].file, "e");
    EXPECT_EQ(kept[32].file, "h");
    EXPECT_EQ(kept[33].message, "1 more of repeated-member");
    EXPECT_EQ(kept[34].message, "9 more of dead-link");
    EXPECT_EQ(kept[34].file, "");
    EXPECT_EQ(kept[34].further, 9u);
}

template <typename Definition>
std::vector<std::string> textsOf() {
    return {Definition::texts.begin(), Definition::texts.end()};
}

std::vector<std::string> textsAt(std::string_view schema, const std::string& pointer) {
    const boost::json::value root = boost::json::parse({schema.data(), schema.size()});
    std::vector<std::string> texts;
    for (const boost::json::value& text : root.at_pointer(pointer).as_array())
        texts.emplace_back(text.as_string());
    return texts;
}

/// Same texts, same order.
TEST(Schemas, HaveTheEnumerationsOfTheLibrary) {
    const auto types = textsOf<reference::property::RefEntityTypeDefinition>();
    const auto functions = textsOf<reference::property::FunctionTypeDefinition>();
    const std::string lookup = "/definitions/item/properties/";
    EXPECT_EQ(textsAt(refdoc::kLookupSchema, lookup + "type/enum"), types);
    EXPECT_EQ(textsAt(refdoc::kLookupSchema, lookup + "fcntype/enum"), functions);
    const struct {
        const char* member;
        std::vector<std::string> texts;
    } rows[] = {
        {"type", types},
        {"fcntype", functions},
        {"deprecationstatus", textsOf<reference::property::DeprecationStatusDefinition>()},
        {"syntaxtype", textsOf<reference::property::SyntaxTypeDefinition>()},
    };
    std::string reference(refdoc::kReferenceSchema);
    std::erase_if(reference, [](char byte) { return byte == ' ' || byte == '\n'; });
    for (const auto& [member, texts] : rows) {
        std::string list;
        for (const std::string& text : texts)
            list.append(list.empty() ? "\"" : ",\"").append(text).append("\"");
        EXPECT_THAT(reference, HasSubstr("\"enum\":[" + list + "]")) << member;
    }
}

TEST(FormatsDocument, ListsTheLanguages) {
    std::ifstream file(DOCPARSER_FORMATS_DOCUMENT);
    const std::string page{std::istreambuf_iterator<char>(file), {}};
    std::string list;
    for (const std::string& language : refdoc::supportedLanguages())
        list += (list.empty() ? "\n" : " ") + language;
    EXPECT_THAT(page, HasSubstr(list + '\n'));
}

TEST(JsonPositions, FindsValuesInOnePass) {
    const std::string text =
        "\r\n{ \"a~/b\" : [ 1 ,{}, [\"]\\\"\", {\"\\u00e9\":\n\ttrue}]]\n,\"x\":-1e5}";
    const std::vector<std::string> pointers{
        "", "/a~0~1b", "/a~0~1b/1", "/a~0~1b/2/0", "/a~0~1b/2/1/é", "/x", "/gone"};
    const auto offsets = refdoc::findInJson(text, pointers);
    std::vector<std::string> found;
    for (const std::size_t offset : offsets)
        found.push_back(text.substr(offset, 3));
    EXPECT_THAT(found, ElementsAre("{ \"", "[ 1", "{},", "\"]\\", "tru", "-1e", "\r\n{"));
    const auto positions = refdoc::positionsOf(text, offsets);
    EXPECT_EQ(positions[4].line, 3u);
    EXPECT_EQ(positions[4].column, 2u);
}

TEST(Progress, ShowsHowFarAJobIs) {
    EXPECT_EQ(refdoc::progressLine(0, 8), '[' + std::string(40, ' ') + "]   0%");
    EXPECT_EQ(refdoc::progressLine(4, 8),
              '[' + std::string(20, '#') + std::string(20, ' ') + "]  50%");
    EXPECT_EQ(refdoc::progressLine(8, 8), '[' + std::string(40, '#') + "] 100%");
    EXPECT_EQ(refdoc::progressLine(0, 0), '[' + std::string(40, '#') + "] 100%");
}

} // namespace
