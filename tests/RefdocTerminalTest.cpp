#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "refdoc/completion/ShellWords.hpp"
#include "support/RefdocFixture.hpp"

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testsupport::ProcessCall;
using testsupport::ProcessResult;

using RefdocOnTerminal = testsupport::Refdoc;

TEST_F(RefdocOnTerminal, StylesOnTerminalsOnly) {
    const std::string bold = "\x1b[1mNAME\x1b[0m";
    const Words show{"show", "alpha", "zoom"};
    EXPECT_THAT(onTerminal(show).output, HasSubstr(bold));
    EXPECT_THAT(onTerminal(show, {{"NO_COLOR", ""}}).output, HasSubstr(bold));
    EXPECT_THAT(onTerminal(show, {{"NO_COLOR", "1"}}).output, Not(HasSubstr("\x1b")));
    EXPECT_THAT(onTerminal(show, {{"TERM", "dumb"}}).output, Not(HasSubstr("\x1b")));
    EXPECT_THAT(refdoc(show).output, Not(HasSubstr("\x1b")));
}

TEST_F(RefdocOnTerminal, FitsTheTerminal) {
    const struct {
        unsigned short columns;
        Environment environment;
        std::size_t width;
    } cases[] = {
        {50, {}, 50},
        {200, {}, 100},
        {50, {{"COLUMNS", "60"}}, 60},
        {50, {{"COLUMNS", "nonsense"}}, 50},
        {50, {{"MANWIDTH", "120"}, {"COLUMNS", "60"}}, 120},
        {0, {}, 80},
    };
    for (auto [columns, environment, width] : cases) {
        environment.emplace("NO_COLOR", "1");
        const std::string page =
            onTerminal({"show", "alpha", "Unzoom"}, environment, columns).output;
        EXPECT_EQ(page.find('\n'), width) << columns;
    }
}

TEST_F(RefdocOnTerminal, UsesThePagerOfTheUser) {
    const std::string record = root_.nativePathOf("recorded").string();
    const std::string recorder = "cat >" + refdoc::shellQuoted(record) + "; echo recorded $LESS";
    const struct {
        Environment environment;
        bool paged;
    } cases[] = {
        {{{"MANPAGER", recorder}, {"PAGER", "false"}}, true},
        {{{"MANPAGER", std::nullopt}, {"PAGER", recorder}}, true},
        {{{"MANPAGER", ""}, {"PAGER", recorder}}, false},
        {{{"MANPAGER", "/does/not/exist 2>/dev/null"}}, false},
    };
    for (auto [environment, paged] : cases) {
        std::filesystem::remove(record);
        environment["LESS"] = std::nullopt;
        const ProcessResult result = onTerminal({"show", "alpha", "zoom"}, environment);
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_EQ(std::filesystem::exists(record), paged);
        EXPECT_THAT(result.output,
                    paged ? HasSubstr("recorded -FRi") : HasSubstr("enlarge a view"));
    }
    EXPECT_EQ(refdoc({"show", "alpha", "zoom"}, {{"MANPAGER", recorder}}).output.find("recorded"),
              std::string::npos);
}

TEST_F(RefdocOnTerminal, SurvivesAPagerThatStopsReading) {
    std::string document = R"({"productName": "M", "baseCode": "M", "helpFolder": "m",
        "helpLocation": "m", "refItems": [)";
    for (int number = 0; number < 20000; ++number)
        document += R"({"href": "h", "refpurpose": "one of many"}, )";
    document += R"({"href": "h", "refpurpose": "the last"}]})";
    root_.referenceFile("many.json", document);
    const ProcessResult result = onTerminal({"show", "many"}, {{"MANPAGER", "head -n 2"}});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.output, HasSubstr("one of many"));
    EXPECT_THAT(result.output, Not(HasSubstr("the last")));
}

TEST_F(RefdocOnTerminal, FitsItsColumnsToTheTerminal) {
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

TEST_F(RefdocOnTerminal, HasTitlesAboveProducts) {
    EXPECT_THAT(onTerminal({"products"}, {{"NO_COLOR", "1"}}, 100).output,
                AllOf(HasSubstr("KEY "), HasSubstr("FILES\n"), HasSubstr("\n  "),
                      HasSubstr("alpha  Alpha Tools  product  yes        12       en ja      ")));
}

TEST_F(RefdocOnTerminal, AsksWhichResourceIsMeant) {
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

TEST_F(RefdocOnTerminal, ReportsOutputThatCannotBeWritten) {
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
