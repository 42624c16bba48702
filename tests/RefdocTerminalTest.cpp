#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "refdoc/completion/ShellWords.hpp"
#include "support/RefdocFixture.hpp"

namespace {

using testing::HasSubstr;
using testing::Not;
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

} // namespace
