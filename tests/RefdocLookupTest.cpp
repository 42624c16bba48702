#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/RefdocLookupFixture.hpp"

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testsupport::ProcessResult;
using testsupport::RefdocLookup;

TEST_F(RefdocLookup, FindsNamesByPattern) {
    const struct {
        Words arguments;
        std::string found;
    } cases[] = {
        // The same spelling first, then the same name in other case, then longer names.
        {{"zoom"}, "zoom/alpha zoom/zeta Zoom/alpha zoomAll/alpha "},
        {{"Zoom"}, "Zoom/alpha "},
        {{"zoomA"}, "zoomAll/alpha "},
        {{"zooma"}, "zoomAll/alpha "},
        {{"zoomAL"}, ""},
        {{"unz"}, "Unzoom/alpha "},
        {{"nzoom"}, ""},
        // Case beyond ASCII.
        {{"über"}, "Über/alpha "},
        {{"strasse"}, "Straße/alpha "},
        {{"Strasse"}, ""},
        {{"Ü"}, "Über/alpha "},
        // Whole names, as in the shell; `?` matches one character, whatever its length in bytes.
        {{"*zoom"}, "Unzoom/alpha Zoom/alpha zoom/alpha zoom/zeta "},
        {{"Z*"}, "Zoom/alpha "},
        {{"zoom*"}, "Zoom/alpha zoom/alpha zoom/zeta zoomAll/alpha "},
        {{"?ber"}, "Über/alpha "},
        {{"??ber"}, ""},
        {{"[uz]*m"}, "Unzoom/alpha Zoom/alpha zoom/alpha zoom/zeta "},
        {{"[!u]oom"}, "Zoom/alpha zoom/alpha zoom/zeta "},
        // A name that is also a glob.
        {{"a*b"}, "a*b/alpha axb/alpha "},
        {{"a\\*b"}, "a*b/alpha "},
        {{"["}, "[/alpha "},
        // Filters.
        {{"zoom", "--product", "zeta"}, "zoom/zeta "},
        {{"zoom", "--type", "class"}, "Zoom/alpha "},
        {{"--type", "operator"}, "a*b/alpha axb/alpha "},
        {{"--product", "AB"}, "board/AB "},
        {{"zoom", "--all"}, "zoom/alpha zoom/beta zoom/zeta Zoom/alpha zoomAll/alpha "},
        {{"--all", "--product", "beta"}, "rotate/beta zoom/beta "},
        {{"card", "--all"}, "card/AC "},
        {{"zoom", "--limit", "2"}, "zoom/alpha zoom/zeta "},
        {{"zoom", "--all", "--limit", "2"}, "zoom/alpha zoom/beta "},
    };
    for (const auto& [arguments, expected] : cases)
        EXPECT_EQ(found(arguments), expected) << testing::PrintToString(arguments);
}

TEST_F(RefdocLookup, PrintsOneLineForEachRecord) {
    EXPECT_EQ(refdoc({"lookup", "zoom", "--all"}).output,
              "zoom\tfunction\tenlarge a view (deprecated)\talpha\n"
              "zoom\tfunction\tcome nearer (not installed)\tbeta\n"
              "zoom\tcommand\tzoom the screen\tzeta\n"
              "Zoom\tclass\tenlarger\talpha\n"
              "zoomAll\tfunction\tenlarge all views\talpha\n");
    EXPECT_EQ(refdoc({"lookup", "unzoom", "--language", "ja"}).output,
              "Unzoom\tfunction\t表示を縮小する\talpha\n");
    EXPECT_EQ(refdoc({"lookup", "e*sc"}).output,
              "e\uFFFDsc\tunknown\tevil \uFFFD[31m text line\talpha\n");
}

TEST_F(RefdocLookup, FitsItsColumnsToTheTerminal) {
    const Environment plain{{"NO_COLOR", "1"}};
    EXPECT_EQ(onTerminal({"lookup", "zoom"}, plain, 48).output,
              "zoom     function  enlarge a view          alpha\n"
              "                   (deprecated)\n"
              "zoom     command   zoom the screen         zeta\n"
              "Zoom     class     enlarger                alpha\n"
              "zoomAll  function  enlarge all views       alpha\n");
    EXPECT_EQ(onTerminal({"lookup", "Unz", "--language", "ja"}, plain, 46).output,
              "Unzoom  function  表示を縮小する         alpha\n");
    EXPECT_EQ(onTerminal({"lookup", "zoomall"}, plain, 24).output, "zoomAll  function  alpha\n"
                                                                   "    enlarge all views\n");
    EXPECT_EQ(onTerminal({"lookup", "pack::"}, plain, 24).output, "pack::age\n"
                                                                  "          namespace  alpha\n"
                                                                  "    a package\n");
    EXPECT_THAT(onTerminal({"lookup", "zoom", "--limit", "1"}).output,
                AllOf(HasSubstr("\x1b[1mzoom\x1b[0m"), HasSubstr("refdoc: 3 more (--limit)")));
}

TEST_F(RefdocLookup, PrintsJson) {
    const ProcessResult result = refdoc({"lookup", "zoom", "--all", "--limit", "2", "--json"});
    EXPECT_EQ(result.exitCode, 0);
    const boost::json::value value = boost::json::parse(result.output);
    EXPECT_EQ(value.at("language"), "en");
    EXPECT_EQ(value.at("matches"), 5);
    EXPECT_EQ(value.at("records"), boost::json::parse(R"([
        {"name": "zoom", "entityType": "function", "functionType": "static",
         "purpose": "enlarge a view", "deprecated": true, "href": "zoom.html", "product": "alpha",
         "productName": "Alpha Tools", "helpFolder": "alpha", "installed": true},
        {"name": "zoom", "entityType": "function", "functionType": "unspecified",
         "purpose": "come nearer", "deprecated": false, "href": "zoom.html", "product": "beta",
         "productName": "Beta", "helpFolder": "beta", "installed": false}])"));
}

TEST_F(RefdocLookup, SaysWhyNothingIsFound) {
    const struct {
        Words arguments;
        int exitCode;
        std::string complaint;
    } cases[] = {
        {{"lookup", "zomo"}, 1, "no name matches \"zomo\"\n  similar names: Zoom, zoom"},
        {{"lookup", "UNZOMM"}, 1, "similar names: Unzoom"},
        {{"lookup", "rotate"},
         1,
         "documented only by what is not installed: beta (--all shows it)"},
        {{"lookup", "ca", "--type", "object"}, 1, "not installed: AC (--all"},
        {{"lookup", "rotat", "--product", "beta"}, 1, "not installed: beta (--all"},
        {{"lookup", "rotaet", "--all"}, 1, "similar names: rotate"},
        {{"lookup", "zoom", "--type", "macro"}, 1, "no macro matches \"zoom\"\n"},
        {{"lookup", "--type", "macro"}, 1, "no macro is documented\n"},
        {{"lookup", "x", "--product", "alhpa"}, 1, "no product has that key"},
        {{"lookup", "x", "--product", "alhpa"}, 1, "similar names: alpha"},
        {{"lookup", "*ZOOM"}, 1, "letter case counted"},
        {{"lookup", "x", "--type", "thing"}, 2, "the types are unknown, function, method"},
        {{"lookup", "x", "--limit", "0"}, 2, "\"0\" is not a number of at least 1"},
        {{"lookup", "x", "--limit", "-1"}, 2, "\"-1\" is not a number of at least 1"},
        {{"lookup", "x", "--limit", "many"}, 2, "\"many\" is not a number"},
        {{"lookup", "x", "y"}, 2, "y"},
        {{"show", "zomo"}, 1, "zomo.json: no such file"},
        {{"show", "zomo"}, 1, "tried 17 lookup records in " + root_.lookupFolder().string()},
        {{"show", "zomo"}, 1, "similar names: Zoom, zoom"},
        {{"show", "ZOOM"}, 1, "similar names: Zoom, zoom"},
        {{"show", "ghost"},
         1,
         "Alpha Tools documents \"ghost\", but its resource \"alpha\" has no entry"},
        {{"show", "card"},
         1,
         "Alpha Card documents \"card\", but its resource \"alpha\" has no entry"},
        {{"show", "missing"}, 1, "missing.json: no such file"},
        {{"show", "missing", "--language", "ja"}, 1, "missing_ja.json: no such file"},
        {{"show", "broken"}, 1, "broken.json: unreadable, not in the format"},
        {{"show", ""}, 1, "no reference entries found"},
        {{"show", "alpha", "zoon"}, 1, "similar names: zoom"},
        {{"show", "alpha", "show"}, 1, "\"alpha\" documents nothing named \"show\""},
        {{"show", "alpha", "show"}, 1, "alpha.json: not in it"},
        {{"show", "alpha", ""}, 1, "nothing named \"\""},
        {{"show", "alpha", "--", "--json"}, 1, "nothing named \"--json\""},
        {{"show"}, 2, "RESOURCE is required"},
        {{}, 2, "no command given"},
        {{"frob"}, 2, "\"frob\" is not a command"},
        {{"--frob"}, 2, "\"--frob\" is not an option"},
        {{"show", "alpha", "zoom", "more"}, 2, "more"},
        {{"show", "alpha", "--frob"}, 2, "--frob"},
        {{"show", "alpha", "--language", "xx"}, 2, "the languages are en, "},
        {{"show", "alpha", "--root", "/does/not/exist"}, 2, "\"/does/not/exist\" is not a folder"},
        {{"show", "alpha", "--root", REFDOC_PROGRAM}, 2, "is not a folder"},
    };
    for (const auto& [arguments, exitCode, complaint] : cases) {
        const ProcessResult result = refdoc(arguments);
        EXPECT_EQ(result.exitCode, exitCode) << testing::PrintToString(arguments);
        EXPECT_THAT(result.errors, AllOf(testing::StartsWith("refdoc: "), HasSubstr(complaint)));
        EXPECT_THAT(result.output, IsEmpty());
    }
    for (const auto& [arguments, list] : {std::pair(Words{"lookup", "zomo", "--json"}, "records"),
                                          {{"show", "alpha", "zoon", "--json"}, "documents"}}) {
        const ProcessResult json = refdoc(arguments);
        EXPECT_EQ(json.exitCode, 1);
        EXPECT_EQ(boost::json::parse(json.output).at(list), boost::json::array{});
    }
}

TEST_F(RefdocLookup, NamesOnlyTheFirstOfManyProductsThatAreNotInstalled) {
    for (const std::string product : {"p1", "p2", "p3", "p4", "p5", "p6", "p7"})
        root_.lookupFile(
            product + ".json",
            R"({"productName": "", "baseCode": "", "helpLocation": "", "helpFolder": ")" + product +
                R"(", "refItems": [{"name": "far", "refpurpose": "", "href": ""}]})");
    EXPECT_THAT(refdoc({"lookup", "far"}).errors,
                HasSubstr("not installed: p1, p2, p3, p4, p5 and 2 more (--all shows it)"));
}

TEST_F(RefdocLookup, ReportsFaultsOfTheRoot) {
    root_.writeFile("installedProducts.json", "[");
    for (const Words& arguments :
         {Words{"lookup", "zoom"}, Words{"show", "zoom"}, Words{"products"}}) {
        const ProcessResult broken = refdoc(arguments);
        EXPECT_EQ(broken.exitCode, 2) << arguments.front();
        EXPECT_THAT(broken.errors, HasSubstr("installedProducts.json"));
    }
    root_.remove("docCatalog");
    root_.remove("installedProducts.json");
    const ProcessResult empty = refdoc({"lookup", "zoom"});
    EXPECT_EQ(empty.exitCode, 1);
    EXPECT_THAT(empty.errors, AllOf(HasSubstr("no lookup records found in "),
                                    HasSubstr(root_.lookupFolder().string())));
}

/// Characters that start a line or reverse what follows on some terminals.
const std::vector<std::string> kForging{"\u0085", "\u009b", "\u061c", "\u200e", "\u200f",
                                        "\u2028", "\u2029", "\u202a", "\u202e", "\u2066",
                                        "\u2069", "\x1b",   "\x7f",   "\r",     "\nforged"};

TEST_F(RefdocLookup, PrintsNoControlsFromDocuments) {
    const std::string forging =
        "zap" + std::accumulate(kForging.begin(), kForging.end(), std::string());
    const boost::json::array items{{{"name", forging},
                                    {"href", forging},
                                    {"refpurpose", forging},
                                    {"description", forging},
                                    {"refentity", {{{"name", forging}}}}},
                                   {{"name", "tea"}, {"href", ""}, {"refpurpose", forging}}};
    for (const std::string& key : {forging, forging + '2'}) {
        const std::string document =
            boost::json::serialize(boost::json::object{{"productName", forging},
                                                       {"baseCode", forging},
                                                       {"helpFolder", key},
                                                       {"helpLocation", forging},
                                                       {"refItems", items}});
        root_.lookupFile(key + ".json", document);
        root_.lookupFile(key + "_ja.json", document + forging);
        root_.referenceFile(key + ".json", document);
    }
    const std::string similar = forging + 'x';
    for (const Words& arguments :
         {Words{"lookup", "--all"}, Words{"lookup", "--all", similar}, Words{"lookup", forging},
          Words{"lookup", "x", "--product", similar}, Words{"lookup", "x", "--type", forging},
          Words{"lookup", "x", "--limit", forging}, Words{"products"}, Words{"show", forging},
          Words{"show", forging, forging}, Words{"show", forging, similar}, Words{"show", similar},
          Words{"show", "tea"}, Words{"show", "x", "--root", forging}, Words{forging},
          Words{"check"}, Words{"complete", "refdoc --root . lookup --all z"}})
        for (const std::string format : {"--verbose", "--json", "--sarif"}) {
            if (format == "--sarif" && arguments.front() != "check")
                continue;
            Words words = arguments;
            words.insert(words.begin() + 1, format);
            const ProcessResult result = refdoc(words);
            for (const std::string& character : kForging)
                EXPECT_THAT(result.output + result.errors, Not(HasSubstr(character)))
                    << testing::PrintToString(words);
        }
    const auto json = boost::json::parse(refdoc({"lookup", "--all", "--json", forging}).output);
    EXPECT_EQ(json.at("records").at(0).at("name").as_string(), forging);
}

TEST_F(RefdocLookup, ExplainsItself) {
    for (const std::string command : {"", "lookup", "show", "products"}) {
        const ProcessResult result =
            refdoc(command.empty() ? Words{"--help"} : Words{command, "--help"});
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_THAT(result.output, AllOf(HasSubstr("Exit codes:"), HasSubstr("Examples:"),
                                         HasSubstr("  refdoc " + command)));
    }
    EXPECT_THAT(refdoc({"--version"}).output,
                testing::MatchesRegex("refdoc [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

} // namespace
