#include <cstddef>
#include <string>
#include <utility>
#include <vector>

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

struct FileCase {
    std::string file;
    std::string text;
    std::string findings;
};

TEST_F(RefdocCheck, ReportsFileNames) {
    const std::string sound = withItems(kSpin);
    const FileCase cases[] = {
        {"referenceapi_lookup/alpha.Json", sound,
         ": error: the extension is not in lower case; the whole file is lost"},
        {"referenceapi_lookup/README", "", ": note: not a resource file: ignored"},
        {"referenceapi/alpha.zip", "",
         ": error: full reference files are not read from packages; the whole file is lost"},
        {"referenceapi/alpha_xx.json", withItems(kPage),
         ": warning: xx is not a supported language: read as English, as the resource "
         "\"alpha_xx\""},
        {"referenceapi/get_it.json", withItems(kPage),
         ":1:1: warning: there is no English file get.json: readers of other languages get "
         "nothing"},
        {"referenceapi/zz_xx.json", withItems(kPage), ""},
        {"referenceapi/zz_jp.json", withItems(kPage),
         ": note: jp is not a supported language: read as English, as the resource \"zz_jp\""},
        {"referenceapi/alpha_lib.json", withItems(kPage), ""},
        {"referenceapi/alpha_en.json", withItems(kPage),
         ": warning: names of English files have no language suffix: read as English, as the "
         "resource "
         "\"alpha_en\""},
        {"referenceapi/beta_JA.json", withItems(kPage),
         ": warning: _JA is not the suffix _ja: read as English, as the resource \"beta_JA\""},
        {"referenceapi/alpha_pt-br.json", withItems(kPage),
         ": warning: _pt-br is not the suffix _pt_BR: read as English, as the resource "
         "\"alpha_pt-br\""},
        {"referenceapi/alpha-ja.json", withItems(kPage),
         ": warning: -ja is not the suffix _ja: read as English, as the resource \"alpha-ja\""},
        {"referenceapi/alpha.JA.json", withItems(kPage),
         ": warning: .JA is not the suffix _ja: read as English, as the resource \"alpha.JA\""},
        {"referenceapi/beta-ja.json", withItems(kPage), ""},
        {"referenceapi/alpha-fr.1.json", withItems(kPage), ""},
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
    root_.writeFile("docCatalog/referenceapi_lookup/ja/alpha.json", "");
    root_.writeFile("docCatalog/referenceapi_lookup/.tool/settings.json", "");
    root_.lookupFile("._alpha_xx.json", std::string("\0\5\x16\7", 4));
    EXPECT_EQ(findings(), "referenceapi/folder.json: note: a folder: ignored\n"
                          "referenceapi_lookup/._alpha_xx.json: note: metadata of macOS, not "
                          "documentation\n"
                          "referenceapi_lookup/.tool: note: a folder: ignored\n"
                          "referenceapi_lookup/ja: error: folders are not searched, and this "
                          "one holds 1 resource file; all files of the folder are lost\n");
}

TEST_F(RefdocCheck, ReportsWhatPackagesLose) {
    const std::string sound = withItems(kSpin);
    const auto one = [&](const char* leaf) { return ZipFile().add(leaf, sound).build(); };
    const auto two = [&](const char* first, const char* second) {
        return ZipFile().add(first, sound).add(second, sound).build();
    };
    const struct {
        const char* name;
        ZipBytes package;
        std::string findings; ///< each follows the path of the package
    } cases[] = {
        {"alpha.zip", one("other.json"), ""},
        {"alpha.zip", one("folder/alpha.json"), ""},
        {"alpha.zip", ZipFile().add("folder/", "").build(),
         ": warning: the package has no entries"},
        {"alpha.zip", one("alpha.JSON"),
         ":alpha.JSON: error: the extension is not in lower case; the whole entry is lost"},
        {"alpha.zip", one("alpha.txt"), ":alpha.txt: note: not a resource file: ignored"},
        {"alpha.zip", ZipFile().add("__MACOSX/._a.json", std::string("\0\5\x16\7", 4)).build(),
         ":__MACOSX/._a.json: note: metadata of macOS, not documentation: it still counts as an "
         "entry "
         "of the package"},
        {"alpha.zip", one("alpha_ja.json"),
         ":alpha_ja.json: warning: the package's only entry: read as English, not as ja, since the "
         "package's name has no language"},
        {"alpha_ja.zip", one("alpha_ja.json"), ""},
        {"alpha_ja.zip", one("alpha.json"),
         ":alpha.json: error: the only entry of a package for ja must end with _ja itself; the "
         "whole entry is lost"},
        {"alpha.zip", two("alpha.json", "alpha_ja.json"), ""},
        {"alpha.zip", two("alpha.json", "alpha_xx.json"),
         ":alpha_xx.json: warning: xx is not a supported language: read as English, as the "
         "resource "
         "\"alpha_xx\""},
        {"alpha_ja.zip", two("alpha_ja.json", "alpha_de.json"),
         ":alpha_de.json: error: is for de, but the package is only read for ja; the whole entry "
         "is "
         "lost"},
        {"alpha.zip", two("a.json", "b_ja.json").breakChecksum(1),
         ":b_ja.json: error: the entry cannot be read: "},
        {"alpha.zip", two("a.json", "b_ja.json").markEncrypted(0),
         ":a.json: error: the entry cannot be read: "},
        {"alpha.zip", ZipFile().add("a.json", sound).add("b_ja.json", "{\n1").build(),
         ":b_ja.json:2:1: error: not JSON: the name of a member, in double quotes, is missing; "
         "the whole entry is lost"},
        {"alpha.zip", two("d/a.json", "e/a.JSON"),
         ":e/a.JSON: error: the extension is not in lower case; the whole entry is lost"},
        {"alpha.zip", ZipFile().add("a.json", sound).add("d/b.zip", "PK\3\4").build(),
         ":d/b.zip:1:1: error: the content is a zip package: packages within packages are not "
         "read; the "
         "whole entry is lost"},
        {"alpha.zip", one("alpha.json").truncate(30), ": error: the package cannot be read: "},
    };
    for (const auto& [name, package, expected] : cases) {
        root_.remove("docCatalog/referenceapi_lookup");
        package.write(root_.lookupFolder() / name);
        if (std::string(name) != "alpha.zip")
            root_.lookupFile("alpha.json", sound);
        const std::string found = findings();
        const std::string path = "referenceapi_lookup/" + std::string(name);
        if (expected.empty())
            EXPECT_EQ(found, "") << name;
        else
            EXPECT_THAT(found, StartsWith(path + expected)) << name;
        EXPECT_EQ(refdoc({"check"}).exitCode, expected.find(": error") == expected.npos ? 0 : 1)
            << expected;
    }
}

TEST_F(RefdocCheck, ComparesLocalizedFilesWithEnglishOnes) {
    const std::string twice = R"({"href": "b.html", "refpurpose": "p"})";
    root_.lookupFile("alpha_ja.json",
                     withItems(R"({"name": "Spin", "refpurpose": "p", "href": "a.html"})"));
    root_.lookupFile("alpha_de.json",
                     withItems("", ", \"supportPackages\": [" + package("N") + "]"));
    root_.referenceFile("alpha_ja.json", withItems(R"({"href": "A.html", "refpurpose": "p"})"));
    root_.referenceFile("beta_ja.json", withItems(kPage));
    root_.referenceFile("lost.json", "{");
    root_.referenceFile("lost_ja.json", withItems(kPage));
    root_.referenceFile("more.json", withItems(twice + ", " + twice));
    root_.referenceFile("more_ja.json", withItems(twice));
    EXPECT_EQ(
        findings(),
        "referenceapi/alpha_ja.json:3:10: warning: A.html: the href \"A.html\" is not in the "
        "English document (/refItems/0/href)\n"
        "referenceapi/beta_ja.json:1:1: warning: there is no English file beta.json: readers "
        "of other languages get nothing\n"
        "referenceapi/lost.json:1:2: error: not JSON: the text ends too early; the whole file is "
        "lost\n"
        "referenceapi/more_ja.json:3:1: warning: b.html: English has 2 items with this href: "
        "readers "
        "of ja get only the 1 here (/refItems/0)\n"
        "referenceapi_lookup/alpha_de.json:3:24: warning: there is no sound English document "
        "\"N\": readers of other languages get nothing (/supportPackages/0)\n"
        "referenceapi_lookup/alpha_ja.json:3:10: warning: Spin: the name \"Spin\" is not in "
        "the English document (/refItems/0/name)\n");
}

/// A lookup of the name "spin".
std::string spin(const std::string& page, const std::string& purpose = "p") {
    return R"({"name": "spin", "refpurpose": ")" + purpose + R"(", "href": ")" + page + "\"}";
}

std::string ofProduct(const std::string& name, std::string text) {
    return text.replace(text.find("\"P\""), 3, '"' + name + '"');
}

TEST_F(RefdocCheck, LooksForPagesWhereReadersDo) {
    const std::string unknown = ":1:1: note: links that cannot be checked, because the full "
                                "reference file alpha.json cannot be read: 1\n";
    const std::string broken = ":1:2: error: not JSON: the text ends too early; the whole file is "
                               "lost\n";
    root_.referenceFile("alpha.json", "{");
    root_.referenceFile("beta.json", withItems(R"({"href": "b.html", "refpurpose": "p",
        "seealso": [{"name": "n", "url": "alpha/gone.html"}]})"));
    EXPECT_EQ(findings(), "referenceapi/alpha.json" + broken + "referenceapi/beta.json" + unknown +
                              "referenceapi_lookup/alpha.json" + unknown);
    const auto elsewhere = [](const std::string& why) {
        return "referenceapi_lookup/alpha.json:3:45: warning: spin: the page of the href "
               "\"a.html\" is documented, but " +
               why +
               ", and readers look for it in the full reference file that the help folder names "
               "(/refItems/0/href)\n";
    };
    reset();
    root_.referenceFile("alpha.json", withItems(""));
    root_.referenceFile("alpha_ja.json", "{");
    root_.referenceFile("beta.json", withItems(kPage));
    EXPECT_EQ(findings(), "referenceapi/alpha_ja.json" + broken + elsewhere("not in alpha.json"));
    root_.remove("docCatalog/referenceapi");
    root_.referenceFile("beta.json", withItems(kPage));
    EXPECT_EQ(findings(), elsewhere("there is no alpha.json"));
}

TEST_F(RefdocCheck, ReportsItemsHiddenByOtherFiles) {
    const std::string lookups = "docCatalog/referenceapi_lookup/";
    const std::string lost = " error: spin: " + lookups;
    const std::string before = " also has the name and is read before: its lookups count; the item "
                               "is lost (/refItems/";
    const std::string after =
        " also has the name and is read after: its lookups count; the item is "
        "lost (/refItems/";
    const struct {
        const char* what;
        std::vector<std::pair<std::string, std::string>> files; ///< beside alpha.json
        std::string findings;
    } cases[] = {
        {"the same again", {{"beta.json", withItems(kSpin)}}, ""},
        {"other names",
         {{"beta.json", withItems(R"({"name": "turn", "refpurpose": "p", "href": "a.html"})")}},
         ""},
        {"more of a name", {{"beta.json", withItems(spin("a.html") + ", " + spin("#b"))}}, ""},
        {"another href",
         {{"beta.json", withItems(spin("#b"))}},
         "beta.json:3:1:" + lost + "alpha.json" + before + "0)\n"},
        {"another purpose",
         {{"beta.json", withItems(spin("a.html", "q"))}},
         "beta.json:3:1:" + lost + "alpha.json" + before + "0)\n"},
        {"another header",
         {{"beta.json", ofProduct("Q", withItems(kSpin))}},
         "beta.json:1:1: warning: " + lookups +
             "alpha.json also has the document \"alpha\" and is read before: its header counts\n"},
        {"localized files",
         {{"a_ja.json", withItems(spin("a.html", "q"))},
          {"b_ja.json", withItems(spin("a.html", "r"))}},
         "a_ja.json:3:1:" + lost + "b_ja.json" + after + "0)\n"},
        {"a localized file without the English href",
         {{"alpha_ja.json", withItems(spin("#b"))}},
         "alpha.json:3:1: warning: spin: readers of ja do not get it: " + lookups +
             "alpha_ja.json has the name, but not the href \"a.html\" (/refItems/0)\n"},
    };
    for (const auto& [what, files, expected] : cases) {
        reset();
        for (const auto& [name, text] : files)
            root_.lookupFile(name, text);
        EXPECT_EQ(findings(), expected.empty() ? "" : "referenceapi_lookup/" + expected) << what;
        for (const auto& [name, text] : files)
            root_.remove("docCatalog/referenceapi_lookup/" + name);
    }
}

/// In a package of one language, English entries fill in only for readers of that language.
TEST_F(RefdocCheck, ReportsItemsThatFillInForNobody) {
    const std::string japanese = R"({"name": "turn", "refpurpose": "p", "href": "a.html"})";
    ZipFile()
        .add("a_ja.json", withItems(japanese))
        .add("b.json", withItems(spin("a.html", "first")))
        .write(root_.lookupFolder() / "a_ja.zip");
    ZipFile()
        .add("a_ja.json", withItems(japanese))
        .add("c.json", withItems(spin("a.html", "second")))
        .write(root_.lookupFolder() / "b_ja.zip");
    const std::string folder = "referenceapi_lookup/";
    const std::string warning =
        ": warning: read as English, and only by readers of ja: of a "
        "package with several entries the entries' names say the language\n";
    EXPECT_THAT(
        findings(),
        testing::AllOf(testing::HasSubstr(folder + "a_ja.zip:b.json" + warning),
                       testing::Not(testing::HasSubstr("b.json:3:1: error")),
                       testing::HasSubstr(folder + "b_ja.zip:c.json:3:1: error: spin: docCatalog/" +
                                          folder +
                                          "a_ja.zip:b.json also has the name and is read "
                                          "before: its lookups count; the item is lost")));
}

TEST_F(RefdocCheck, DistinguishesEntriesOfOneName) {
    root_.remove("docCatalog/referenceapi_lookup");
    ZipFile()
        .add("d/a.json", withItems(kSpin))
        .add("e/a.json", withItems(spin("#b")))
        .add("e/a.json", withItems(spin("#c")))
        .write(root_.lookupFolder() / "alpha.zip");
    const std::string file = "referenceapi_lookup/alpha.zip:";
    const std::string lost =
        "e/a.json:3:1: error: spin: docCatalog/" + file +
        "d/a.json also has the name and is read before: its lookups count; the "
        "item is lost (/refItems/0)\n";
    EXPECT_EQ(findings(), file + lost + file + lost);
}

} // namespace
