#include <string>
#include <string_view>

#include <boost/json/array.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/RefdocFixture.hpp"

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testsupport::ProcessCall;
using testsupport::ProcessResult;
using testsupport::Refdoc;

constexpr const char* kZoomPage =
    R"(zoom (function)             Alpha Tools             zoom (function)

NAME
       zoom, Unzoom - enlarge a view

STATUS
       discouraged

SYNOPSIS
   Basic
       zoom(factor)

DESCRIPTION
       First paragraph.

           verbatim

PICTURE
       A lens zoom.png

ARGUMENTS
   Inputs
       factor How much
              Values: 1, 2
              Default: 2

   Pairs
       Mode (name-value pair)
              How

OUTPUTS
       view   The new view

PARAMETERS
       limit  The greatest factor
              Default: 9

PROPERTIES
   Looks
       Color  Its colour
              Default: red

EXAMPLES
       Zoom in
              e.html
              Open with: open e

SEE ALSO
       pan, Site <https://example.org/>

views                     Introduced: 2.1                 zoom.html
)";

TEST_F(Refdoc, ShowsAnEntryAsAManualPage) {
    const ProcessResult byName = refdoc({"show", "alpha", "Unzoom"}, {{"MANWIDTH", "67"}});
    EXPECT_EQ(byName.output, kZoomPage);
    EXPECT_EQ(byName.errors, "");
    EXPECT_EQ(byName.exitCode, 0);

    const ProcessResult byHref = refdoc({"show", "alpha", "zoom.html"});
    EXPECT_THAT(byHref.output,
                AllOf(HasSubstr("enlarge a view"), HasSubstr("enlarge on the board")));
}

TEST_F(Refdoc, ListsNamesByDocumentInOrder) {
    const ProcessResult list = refdoc({"show", "alpha"});
    EXPECT_EQ(list.output, "Alpha Tools\n"
                           "  bare.html  no names\n"
                           "  e\uFFFDsc       evil \uFFFD[31m \uFFFD2J text line\n"
                           "  Unzoom     enlarge a view (discouraged)\n"
                           "  zoom       enlarge a view (discouraged)\n"
                           "\n"
                           "Alpha Board\n"
                           "  zoom  enlarge on the board\n");
    EXPECT_EQ(list.exitCode, 0);
}

TEST_F(Refdoc, UsesTheRequestedLanguage) {
    EXPECT_THAT(refdoc({"--language", "ja", "show", "alpha"}).output,
                AllOf(HasSubstr("アルファ\n"), HasSubstr("  zoom       表示を拡大する\n")));
    EXPECT_THAT(
        refdoc({"show", "alpha", "zoom", "--language", "en"}, {{"LANG", "ja_JP.UTF-8"}}).output,
        HasSubstr("enlarge a view"));
}

TEST_F(Refdoc, PrintsJsonWithAllMembers) {
    const ProcessResult result = refdoc({"show", "alpha", "Unzoom", "--json"});
    EXPECT_EQ(result.exitCode, 0);
    const boost::json::value value = boost::json::parse(result.output);
    EXPECT_EQ(value.at("resource"), "alpha");
    EXPECT_EQ(value.at("language"), "en");
    ASSERT_EQ(value.at("documents").as_array().size(), 1u);
    const boost::json::value& document = value.at("documents").at(0);
    EXPECT_EQ(document.at("key"), "alpha");
    EXPECT_EQ(document.at("baseCode"), "AL");
    const boost::json::value& item = document.at("items").at(0);
    const struct {
        std::string_view pointer;
        boost::json::value expected;
    } members[] = {
        {"/href", "zoom.html"},
        {"/refEntities/1/name", "Unzoom"},
        {"/refEntities/1/entityType", "function"},
        {"/refEntities/1/functionType", "unspecified"},
        {"/deprecationStatus", "discouraged"},
        {"/appThumbnail/alt", "A lens"},
        {"/syntaxGroups/0/syntax/0", "zoom(factor)"},
        {"/inputGroups/0/inputs/0/values/1", "2"},
        {"/inputGroups/0/inputs/0/isNameValuePair", false},
        {"/inputGroups/1/title", "Pairs"},
        {"/inputGroups/1/inputs/0/isNameValuePair", true},
        {"/inputGroups/1/inputs/0/defaultValue", ""},
        {"/outputs/0/values", boost::json::array{}},
        {"/classPropertyGroups/0/properties/0/href", "zoom.html#prop_Color"},
        {"/seeAlso/1/url", "https://example.org/"},
        {"/examples/0/openCommand", "open e"},
        {"/parameters/0/defaultValue", "9"},
    };
    for (const auto& [pointer, expected] : members)
        EXPECT_EQ(item.at_pointer(pointer), expected) << pointer;
    EXPECT_EQ(item.as_object().size(), 15u);
}

TEST_F(Refdoc, LogsOnStandardErrorWhenAsked) {
    EXPECT_EQ(refdoc({"show", "alpha"}).errors, "");
    const ProcessResult verbose = refdoc({"show", "alpha", "--verbose", "--json"});
    EXPECT_THAT(verbose.errors, testing::MatchesRegex("refdoc: Reading file: [^\n]*/alpha.json\n"));
    EXPECT_NO_THROW(boost::json::parse(verbose.output));
}

TEST_F(Refdoc, ReportsOutputThatCannotBeWritten) {
    for (const char* target : {"/dev/full", ""}) {
        for (const Words& arguments : {Words{"show", "alpha"}, Words{"--help"}}) {
            ProcessCall writing = call(arguments);
            writing.standardOutput = target;
            const ProcessResult result = testsupport::run(writing);
            EXPECT_EQ(result.exitCode, 2) << target;
            EXPECT_THAT(result.errors, HasSubstr("cannot write the output"));
        }
    }
}

} // namespace
