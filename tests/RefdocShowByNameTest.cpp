#include <filesystem>
#include <string>

#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "refdoc/completion/ShellWords.hpp"
#include "support/RefdocLookupFixture.hpp"

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testsupport::ProcessCall;
using testsupport::ProcessResult;

using RefdocShowByName = testsupport::RefdocLookup;

TEST_F(RefdocShowByName, FindsTheResourceOfAName) {
    const struct {
        std::string name;
        std::string shown;
        std::string notShown;
        std::string note;
    } cases[] = {
        {"Unzoom", "enlarge a view", "enlarge on the board", ""},
        {"board", "enlarge on the board", "enlarge a view", ""}, // by its href, in its document
        {"rotate", "turn round", "come nearer", "only products that are not installed"},
        {"alpha", "Alpha Board\n", "NAME", ""}, // a resource
    };
    for (const auto& [name, shown, notShown, note] : cases) {
        const ProcessResult result = refdoc({"show", name});
        EXPECT_EQ(result.exitCode, 0) << name;
        EXPECT_THAT(result.output, AllOf(HasSubstr(shown), Not(HasSubstr(notShown)))) << name;
        EXPECT_THAT(result.errors,
                    note.empty() ? testing::Matcher<std::string>(IsEmpty()) : HasSubstr(note))
            << name;
    }
    const boost::json::value json = boost::json::parse(refdoc({"show", "board", "--json"}).output);
    EXPECT_EQ(json.at("resource"), "alpha");
    EXPECT_EQ(json.at("documents").at(0).at("key"), "AB");
}

TEST_F(RefdocShowByName, PrefersTheResourceToTheName) {
    root_.referenceFile("Unzoom.json", R"({"productName": "A resource", "baseCode": "U",
        "helpFolder": "Unzoom", "helpLocation": "h",
        "refItems": [{"href": "u.html", "refpurpose": "u", "refentity": [{"name": "u"}]}]})");
    EXPECT_EQ(refdoc({"show", "Unzoom"}).output, "A resource\n  u  u\n");
    EXPECT_THAT(refdoc({"show", "alpha", "Unzoom"}).output, HasSubstr("enlarge a view"));
}

TEST_F(RefdocShowByName, PrintsTheCommandsToChooseFrom) {
    const std::string root = refdoc::shellQuoted(root_.nativePathOf("").string());
    for (const Words& options : {Words{}, Words{"--json"}}) {
        Words arguments{"show", "zoom"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const ProcessResult result = refdoc(arguments);
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_EQ(result.output, "");
        const std::string command =
            "\n  refdoc --root " + root + " show " + (options.empty() ? "" : "--json ");
        EXPECT_THAT(result.errors,
                    AllOf(HasSubstr(command + "alpha zoom\n      Alpha Tools: "),
                          HasSubstr(command + "zeta zoom\n      Zeta: "), Not(HasSubstr("beta"))));
    }
}

TEST_F(RefdocShowByName, StaysInTheFolder) {
    for (const std::string folder : {"../../secret", "", ".."}) {
        root_.lookupFile("leak.json", R"({"productName": "L", "baseCode": "L", "helpFolder": ")" +
                                          folder + R"(", "helpLocation": "h", "refItems":
            [{"name": "leak", "refpurpose": "", "href": "z.html"}]})");
        for (const char* file :
             {"secret.json", "docCatalog/referenceapi/.json", "docCatalog/referenceapi/...json"})
            std::filesystem::copy_file(root_.referenceFolder() / "zeta.json",
                                       root_.nativePathOf(file),
                                       std::filesystem::copy_options::overwrite_existing);
        const ProcessResult result = refdoc({"show", "leak"});
        EXPECT_EQ(result.exitCode, 1) << folder;
        EXPECT_EQ(result.output, "") << folder;
        EXPECT_THAT(result.errors, HasSubstr("its help folder \"" + folder +
                                             "\" cannot be the name of a resource"));
    }
    EXPECT_EQ(refdoc({"show", "../../secret"}).exitCode, 0); // users may type it themselves
}

TEST_F(RefdocShowByName, AsksOnATerminal) {
    const struct {
        std::string typed;
        int exitCode;
        std::string shown;
    } cases[] = {
        {"2\n", 0, "zoom - zoom the screen"},
        {" 1 \n", 0, "enlarge a view"},
        {"3\n0\nzoom\n2\n", 0, "zoom - zoom the screen"},
        {"q\n", 2, ""},
        {"\n", 2, ""},
        {"\x04", 2, ""},
    };
    for (const auto& [typed, exitCode, shown] : cases) {
        ProcessCall asking = call({"show", "zoom"}, {{"NO_COLOR", "1"}});
        asking.typed = typed;
        const ProcessResult result = testsupport::runOnTerminal(asking, 80);
        EXPECT_EQ(result.exitCode, exitCode) << typed;
        EXPECT_THAT(result.output,
                    AllOf(testing::StartsWith("Several products document \"zoom\":\n"
                                              "  1  alpha - Alpha Tools: enlarge a view\n"
                                              "  2  zeta - Zeta: zoom the screen\n"
                                              "Which one (1-2, q for none)? "),
                          HasSubstr(shown)))
            << typed;
        EXPECT_EQ(result.output.find("\nNAME\n") != std::string::npos, exitCode == 0) << typed;
    }
}

} // namespace
