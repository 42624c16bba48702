#include <cstddef>
#include <sstream>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/RefdocCheckFixture.hpp"
#include "support/ZipFile.hpp"

namespace {

using testing::StartsWith;
using testsupport::kPage;
using testsupport::kSpin;
using testsupport::package;
using testsupport::RefdocCheck;
using testsupport::withItems;
using testsupport::ZipBytes;
using testsupport::ZipFile;

struct Case {
    std::string file;
    std::string text;
    std::string findings;
};

TEST_F(RefdocCheck, TellsWhatNamesCost) {
    const std::string sound = withItems(kSpin);
    const Case cases[] = {
        {"referenceapi_lookup/alpha.Json", sound,
         ": error: the extension is not in lower-case letters; the whole file is lost"},
        {"referenceapi_lookup/README", "", ": note: no resource file: passed over"},
        {"referenceapi/alpha.zip", "",
         ": error: full reference files are not read from packages; the whole file is lost"},
        {"referenceapi/alpha_xx.json", withItems(kPage),
         ": warning: xx is no supported language: read as English, of a resource \"alpha_xx\""},
        {"referenceapi/get_it.json", withItems(kPage),
         ":1:1: warning: there is no English file get.json: readers of other languages get "
         "nothing"},
        {"referenceapi/zz_xx.json", withItems(kPage),
         ": note: xx is no supported language: read as English, of a resource \"zz_xx\""},
        {"referenceapi/alpha_pt_BR.json", withItems(kPage), ""},
    };
    for (const auto& [file, text, expected] : cases) {
        reset();
        root_.writeFile("docCatalog/" + file, text);
        EXPECT_EQ(findings(), expected.empty() ? "" : file + expected + '\n') << file;
    }
    reset();
    root_.lookupFile("x\xFF.json", sound);
    EXPECT_EQ(findings(), "referenceapi_lookup/x\uFFFD.json: error: the name is not UTF-8; the "
                          "whole file is lost\n");
    reset();
    root_.makeFolder("docCatalog/referenceapi/folder.json");
    EXPECT_EQ(findings(), "referenceapi/folder.json: note: no file: passed over\n");
}

/// Without what is told of leaves and files that have the same document on purpose.
std::string withoutSharedKeys(const std::string& findings) {
    std::istringstream lines(findings);
    std::string result;
    for (std::string line; std::getline(lines, line);)
        if (line.find(" has the document ") == line.npos)
            result += line + '\n';
    return result;
}

TEST_F(RefdocCheck, TellsWhatPackagesLose) {
    const std::string sound = withItems(kSpin);
    const auto one = [&](const char* leaf) { return ZipFile().add(leaf, sound).build(); };
    const auto two = [&](const char* first, const char* second) {
        return ZipFile().add(first, sound).add(second, sound).build();
    };
    const struct {
        const char* name;
        ZipBytes package;
        std::string findings; ///< each behind the path of the package
    } cases[] = {
        {"alpha.zip", one("other.json"), ""},
        {"alpha.zip", one("folder/alpha.json"), ""},
        {"alpha.zip", ZipFile().add("folder/", "").build(), ": note: the package holds no leaves"},
        {"alpha.zip", one("alpha.JSON"),
         ":alpha.JSON: error: the extension is not in lower-case letters; the whole leaf is lost"},
        {"alpha.zip", one("alpha.txt"), ":alpha.txt: note: no resource file: passed over"},
        {"alpha.zip", one("alpha_ja.json"),
         ":alpha_ja.json: warning: the package's only leaf: read as English, not as ja, since the "
         "package's name has no language"},
        {"alpha_ja.zip", one("alpha_ja.json"), ""},
        {"alpha_ja.zip", one("alpha.json"),
         ":alpha.json: error: the only leaf of a package for ja must end with _ja itself; the "
         "whole leaf is lost"},
        {"alpha.zip", two("alpha.json", "alpha_ja.json"), ""},
        {"alpha.zip", two("alpha.json", "alpha_xx.json"),
         ":alpha_xx.json: warning: xx is no supported language: read as English, of a resource "
         "\"alpha_xx\""},
        {"alpha_ja.zip", two("alpha_ja.json", "alpha_de.json"),
         ":alpha_de.json: error: is for de, and the package is only read for ja; the whole leaf is "
         "lost"},
        {"alpha.zip", two("a.json", "b_ja.json").breakChecksum(1),
         ":b_ja.json: error: the leaf cannot be read: "},
        {"alpha.zip", two("a.json", "b_ja.json").markEncrypted(0),
         ":a.json: error: the leaf cannot be read: "},
        {"alpha.zip", ZipFile().add("a.json", sound).add("b_ja.json", "{\n1").build(),
         ":b_ja.json:2:1: error: not JSON: syntax error; the whole leaf is lost"},
        {"alpha.zip", one("alpha.json").truncate(30), ": error: the package cannot be read: "},
    };
    for (const auto& [name, package, expected] : cases) {
        root_.remove("docCatalog/referenceapi_lookup");
        package.write(root_.lookupFolder() / name);
        if (std::string(name) != "alpha.zip")
            root_.lookupFile("alpha.json", sound);
        const std::string found = withoutSharedKeys(findings());
        const std::string path = "referenceapi_lookup/" + std::string(name);
        if (expected.empty())
            EXPECT_EQ(found, "") << name;
        else
            EXPECT_THAT(found, StartsWith(path + expected)) << name;
        EXPECT_EQ(refdoc({"check"}).exitCode, expected.find(": error") == expected.npos ? 0 : 1)
            << expected;
    }
}

TEST_F(RefdocCheck, ComparesFilesWithOneAnother) {
    root_.lookupFile("alpha_ja.json",
                     withItems(R"({"name": "Spin", "refpurpose": "p", "href": "a.html"})"));
    root_.lookupFile("beta.json", withItems(kSpin));
    root_.lookupFile("gamma_ja.json", withItems(kSpin));
    root_.lookupFile("alpha_de.json",
                     withItems("", ", \"supportPackages\": [" + package("N") + "]"));
    root_.referenceFile("alpha_ja.json", withItems(R"({"href": "A.html", "refpurpose": "p"})"));
    root_.referenceFile("beta_ja.json", withItems(kPage));
    root_.referenceFile("lost.json", "{");
    root_.referenceFile("lost_ja.json", withItems(kPage));
    const std::string taken = " has the document \"alpha\" too and is read ";
    const std::string header = ": this one only fills in what is not there";
    EXPECT_EQ(
        findings(),
        "referenceapi/alpha_ja.json:3:10: warning: A.html: the href \"A.html\" is not in the "
        "English document (/refItems/0/href)\n"
        "referenceapi/beta_ja.json:1:1: warning: there is no English file beta.json: readers "
        "of other languages get nothing\n"
        "referenceapi/lost.json:1:2: error: not JSON: incomplete JSON; the whole file is "
        "lost\n"
        "referenceapi_lookup/alpha_de.json:3:24: warning: there is no English document "
        "\"N\": readers of other languages get nothing (/supportPackages/0)\n"
        "referenceapi_lookup/alpha_ja.json:1:1: warning: docCatalog/referenceapi_lookup/"
        "gamma_ja.json" +
            taken + "after" + header +
            "\n"
            "referenceapi_lookup/alpha_ja.json:3:10: warning: Spin: the name \"Spin\" is not in "
            "the English document (/refItems/0/name)\n"
            "referenceapi_lookup/beta.json:1:1: warning: docCatalog/referenceapi_lookup/"
            "alpha.json" +
            taken + "before" + header + "\n");
}

} // namespace
