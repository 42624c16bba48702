#include <string>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/RefdocCheckFixture.hpp"
#include "support/ZipFile.hpp"

namespace {

using testing::StartsWith;
using testsupport::kSpin;
using testsupport::RefdocCheck;
using testsupport::withItems;
using testsupport::ZipFile;

TEST_F(RefdocCheck, ReportsWhatFilesOfARepositoryCannotShow) {
    const std::string sound = withItems(kSpin);
    const std::string other = R"({"name": "spin", "refpurpose": "p", "href": "#b"})";
    const ZipFile two = ZipFile().add("a.json", sound).add("b_ja.json", sound);
    const std::string hidden =
        "alpha.zip:e/a.json:3:1: error: spin: "
        "docCatalog/referenceapi_lookup/alpha.zip:d/a.json also has the name";
    const struct {
        std::string name;
        std::string content;
        std::string finding;
    } cases[] = {
        {"x\xFF.json", sound, "x\uFFFD.json: error: the name is not UTF-8; the whole file is lost"},
        {"alpha.zip", two.build().breakChecksum(1).bytes(),
         "alpha.zip:b_ja.json: error: the entry cannot be read: "},
        {"alpha.zip", two.build().markEncrypted(0).bytes(),
         "alpha.zip:a.json: error: the entry cannot be read: "},
        {"alpha.zip", two.build().truncate(30).bytes(),
         "alpha.zip: error: the package cannot be read: "},
        {"alpha.zip",
         ZipFile()
             .add("d/a.json", sound)
             .add("e/a.json", withItems(other))
             .add("e/a.json", withItems(other))
             .build()
             .bytes(),
         hidden},
    };
    for (const auto& [name, content, finding] : cases) {
        reset();
        root_.remove("docCatalog/referenceapi_lookup");
        root_.lookupFile(name, content);
        EXPECT_THAT(findings(), StartsWith("referenceapi_lookup/" + finding));
    }
}

/// Names can be chosen to collide, and values can take many times the memory of their text.
TEST_F(RefdocCheck, LimitsWhatItKeepsOfATree) {
    std::string members;
    for (int i = 0; i < 300; ++i)
        members.append(R"("x)")
            .append(std::to_string(i))
            .append(R"(": [{"x": "x\n"}, "\ty", 1], )");
    std::string values = "[1";
    for (int i = 0; i < 6'000'000; ++i)
        values += ",1";
    values += "]";
    const std::pair<std::string, std::string> cases[] = {
        {withItems('{' + members + R"("name": "spin", "refpurpose": "p", "href": "a.html"})"),
         ":1:1: note: objects with more than 100 unknown members: 200 further ones are not "
         "checked"},
        {withItems("", ", \"x\": " + values), ""},
        {values,
         ": error: not checked: the text has more than 5694304 values, too many for its size"},
    };
    for (const auto& [text, expected] : cases) {
        root_.lookupFile("alpha.json", text);
        EXPECT_EQ(findings(),
                  expected.empty() ? "" : "referenceapi_lookup/alpha.json" + expected + '\n');
    }
}

} // namespace
