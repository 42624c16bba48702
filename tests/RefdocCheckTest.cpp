#include <cstddef>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "refdoc/CheckFinding.hpp"
#include "refdoc/JsonPositions.hpp"
#include "refdoc/Progress.hpp"
#include "support/RefdocFixture.hpp"
#include "support/ZipFile.hpp"

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
using testsupport::ProcessResult;
using testsupport::ZipBytes;
using testsupport::ZipFile;

const std::string kHeader = R"({"productName": "P", "baseCode": "B", "helpFolder": "alpha",
"helpLocation": "h", "refItems": [)";

/// A resource file whose items begin on the third line.
std::string withItems(const std::string& items, const std::string& more = {}) {
    return kHeader + '\n' + items + "]" + more + '}';
}

const std::string kSpin = R"({"name": "spin", "refpurpose": "p", "href": "a.html"})";
const std::string kPage = R"({"href": "a.html", "refpurpose": "p"})";

/// A support package without items.
std::string package(const std::string& baseCode) {
    return R"({"productName": "S", "baseCode": ")" + baseCode +
           R"(", "helpFolder": "f", "helpLocation": "h", "refItems": []})";
}

class RefdocCheck : public testsupport::Refdoc {
protected:
    RefdocCheck() { reset(); }

    /// A root of one sound lookup file and one sound full reference file.
    void reset() const {
        root_.remove("docCatalog");
        root_.lookupFile("alpha.json", withItems(kSpin));
        root_.referenceFile("alpha.json", withItems(kPage));
    }

    /// The findings, one a line, without the path of the catalog folders, and without the summary.
    std::string findings(Words options = {}) const {
        options.insert(options.begin(), "check");
        std::istringstream lines(refdoc(options).output);
        const std::string folder = root_.nativePathOf("docCatalog/").string();
        std::string result;
        for (std::string line; std::getline(lines, line);)
            if (line.starts_with(folder))
                result += line.substr(folder.size()) + '\n';
        return result;
    }
};

struct Case {
    std::string file;
    std::string text;
    std::string findings;
};

TEST_F(RefdocCheck, TellsNothingOfSoundFiles) {
    const ProcessResult result = refdoc({"check"});
    EXPECT_EQ(result.output, "0 errors, 0 warnings and 0 notes in 2 files\n");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.exitCode, 0);
}

TEST_F(RefdocCheck, TellsWhatCostsALookupFile) {
    const std::string lost = "; the whole file is lost";
    const Case cases[] = {
        {"", "", ":1:1: error: the text is empty" + lost},
        {"", "\xEF\xBB\xBF{}", ":1:1: error: the text begins with a byte-order mark" + lost},
        {"", "{\"a\":\n \"é\" ,}", ":2:7: error: not JSON: syntax error" + lost},
        {"", withItems(kSpin) + "\nx", ":4:1: error: not JSON: extra data" + lost},
        {"", withItems(kSpin).substr(0, 70), ":2:10: error: not JSON: incomplete JSON" + lost},
        {"", "{\"a\": \"\xFF\"}", ":1:8: error: not JSON: syntax error" + lost},
        {"", std::string(33, '['), ":1:33: error: the text is nested deeper than 32" + lost},
        {"", "[]", ":1:1: error: the document is a list, not an object" + lost},
        {"", withItems("7"),
         ":3:1: error: refItems[0] is a number, not an object" + lost + " (/refItems/0)"},
        {"", withItems(R"({"name": "日本", "refpurpose": "p", "href": null})"),
         ":3:43: error: 日本: href is null, not a text" + lost + " (/refItems/0/href)"},
        {"", withItems(kSpin + R"(, {"name": "n", "refpurpose": "p"})"),
         ":3:56: error: n: href is missing" + lost + " (/refItems/1)"},
        {"", withItems(kSpin, R"(, "supportPackages": {})"),
         ":3:76: error: supportPackages is an object, not a list" + lost + " (/supportPackages)"},
        {"", withItems(kSpin, ", \"supportPackages\": [\n[]]"),
         ":4:1: error: supportPackages[0] is a list, not an object" + lost +
             " (/supportPackages/0)"},
    };
    for (const auto& [file, text, expected] : cases) {
        root_.lookupFile("alpha.json", text);
        EXPECT_EQ(findings(), "referenceapi_lookup/alpha.json" + expected + '\n') << text;
        EXPECT_EQ(refdoc({"check"}).exitCode, 1);
    }
}

TEST_F(RefdocCheck, TellsWhatCostsAFullReferenceFile) {
    const std::string lost = "; the whole file is lost (/refItems/0/";
    const auto item = [](const std::string& members) {
        return withItems(R"({"href": "a.html", "refpurpose": "p",)" + ('\n' + members) + "}");
    };
    const Case cases[] = {
        {"", item(R"("description": 1)"),
         ":4:16: error: a.html: description is a number, not a text" + lost + "description)"},
        {"", item(R"("appthumbnail": null)"),
         ":4:17: error: a.html: appthumbnail is null, not an object" + lost + "appthumbnail)"},
        {"", item(R"("syntaxgroup": [{"title": "", "syntax": [true]}])"),
         ":4:42: error: a.html: syntax[0] is a truth value, not a text" + lost +
             "syntaxgroup/0/syntax/0)"},
        {"", item(R"("inputgroup": [{"inputs": []}])"),
         ":4:16: error: a.html: title is missing" + lost + "inputgroup/0)"},
        {"", item(R"("inputgroup": [{"title": 1, "namevaluepairs": [{"title": 2}]}])"),
         ":4:58: error: a.html: title is a number, not a text" + lost +
             "inputgroup/0/namevaluepairs/0/title)"},
        {"", item(R"("classpropertygroup": [{"classproperty": [{"name": "n"}]}])"),
         ":4:43: error: a.html: purpose is missing" + lost +
             "classpropertygroup/0/classproperty/0)"},
        {"", item(R"("outputs": [{"name": "n", "purpose": "p", "defaultvalue": 1}])"), ""},
        {"", item(R"("colour": [1], "seealso": [])"), ""},
    };
    for (const auto& [file, text, expected] : cases) {
        root_.referenceFile("alpha.json", text);
        EXPECT_EQ(findings(), expected.empty() ? "" : "referenceapi/alpha.json" + expected + '\n')
            << text;
    }
}

TEST_F(RefdocCheck, TellsWhatIsShownOtherwiseThanMeant) {
    const auto spin = [](const std::string& members) {
        return withItems(kSpin.substr(0, kSpin.size() - 1) + ", " + members + '}');
    };
    const std::string deadEnd =
        " leads nowhere: no full reference file documents the page, and there is no such file";
    const Case cases[] = {
        {"lookup", spin(R"("type": "Fuction")"),
         R"(:3:63: warning: spin: type is "Fuction", a text that it does not know (did you mean )"
         R"("function"?); it counts as "unknown" (/refItems/0/type))"},
        {"lookup", spin(R"("fcntype": [])"),
         R"(:3:66: warning: spin: fcntype is a list, not a text; it counts as "unspecified" )"
         R"((/refItems/0/fcntype))"},
        {"lookup", spin(R"("\u006eame": "turn")"),
         R"(:3:55: warning: "name" is there already: what was said before is lost )"
         R"((/refItems/0/name))"},
        {"lookup", withItems(R"({"name": "spin", "refpurpose": "p", "href": "b.html#x"})"),
         ":3:45: warning: spin: the href \"b.html#x\"" + deadEnd + " (/refItems/0/href)"},
        {"lookup", withItems(R"({"name": "spin", "refpurpose": "p", "href": "../alpha.json"})"),
         ":3:45: warning: spin: the href \"../alpha.json\"" + deadEnd + " (/refItems/0/href)"},
        {"lookup", withItems(R"({"name": "s", "refpurpose": "p", "href": "./x/../a.html?q#x"})"),
         ""},
        {"lookup", withItems(R"({"name": "s", "refpurpose": "p", "href": "#x"})"), ""},
        {"lookup", withItems(R"({"name": "s", "refpurpose": "p", "href": "https://x.y/z"})"), ""},
        {"lookup", withItems(R"({"name": "s", "refpurpose": "p", "href": "page.html"})"), ""},
        {"lookup",
         withItems(kSpin, ", \"supportPackages\": [" + package("B") + ",\n" + package("B") + "," +
                              package("alpha") + "]"),
         ":4:1: error: the key \"B\" is that of /supportPackages/0 already; the document is lost "
         "(/supportPackages/1)\n"
         "referenceapi_lookup/alpha.json:4:95: error: the key \"alpha\" is that of the main "
         "document's help folder already; the document is lost (/supportPackages/2)"},
        {"reference", withItems(R"({"href": "a.html", "refpurpose": "p", "introduced": "für",
"refentity": [{"name": "n", "type": "tool"}],
"inputgroup": [{"title": "ä", "inputs": [{"name": "ä", "purpose": "ä"}]}],
"foo": [{"url": "ä"}]})"),
         ":3:53: warning: a.html: introduced has characters beyond ASCII and comes out garbled "
         "(/refItems/0/introduced)\n"
         "referenceapi/alpha.json:5:51: warning: a.html: name has characters beyond ASCII and "
         "comes out garbled (/refItems/0/inputgroup/0/inputs/0/name)"},
        {"reference", withItems(R"({"href": "a.html", "refpurpose": "p",
"refentity": [{"name": "n", "type": "app"}],
"inputgroup": [{"title": "ä", "inputs": [{"name": "ä", "purpose": "ä"}]}]})"),
         ""},
        {"reference", withItems(R"({"href": "a.html", "refpurpose": "p",
"seealso": [{"url": "gone.html", "name": "n"}, {"url": "a.html#y", "name": "n"}]})"),
         ":4:21: warning: a.html: the url \"gone.html\"" + deadEnd +
             " (/refItems/0/seealso/0/url)"},
    };
    root_.writeFile("h/page.html", "");
    for (const auto& [kind, text, expected] : cases) {
        reset();
        const bool isLookup = kind == "lookup";
        isLookup ? root_.lookupFile("alpha.json", text) : root_.referenceFile("alpha.json", text);
        const std::string file =
            isLookup ? "referenceapi_lookup/alpha.json" : "referenceapi/alpha.json";
        EXPECT_EQ(findings(), expected.empty() ? "" : file + expected + '\n') << text;
    }
}

TEST_F(RefdocCheck, TellsWhatNamesCost) {
    const std::string sound = withItems(kSpin);
    const Case cases[] = {
        {"referenceapi_lookup/alpha.Json", sound,
         ": error: the extension is not in lower-case letters; the whole file is lost"},
        {"referenceapi_lookup/README", "", ": note: no resource file: passed over"},
        {"referenceapi_lookup/x\xFF.json", sound,
         ": error: the name is not UTF-8; the whole file is lost"},
        {"referenceapi/alpha.zip", "",
         ": error: full reference files are not read from packages; the whole file is lost"},
        {"referenceapi/alpha_xx.json", withItems(kPage),
         ": warning: xx is no supported language: read as English, of a resource \"alpha_xx\""},
        {"referenceapi/get_it.json", withItems(kPage),
         ": warning: there is no English file get.json: readers of other languages get nothing"},
        {"referenceapi/zz_xx.json", withItems(kPage),
         ": note: xx is no supported language: read as English, of a resource \"zz_xx\""},
        {"referenceapi/alpha_pt_BR.json", withItems(kPage), ""},
    };
    for (const auto& [file, text, expected] : cases) {
        reset();
        root_.writeFile("docCatalog/" + file, text);
        const std::string found = findings();
        if (expected.empty())
            EXPECT_EQ(found, "") << file;
        else
            EXPECT_THAT(found, HasSubstr(expected.substr(0, expected.size()))) << file;
    }
    reset();
    root_.makeFolder("docCatalog/referenceapi/folder.json");
    EXPECT_EQ(findings(), "referenceapi/folder.json: note: no file: passed over\n");
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
        const std::string found =
            findings({"--level", expected.find(": note") == expected.npos ? "warning" : "note"});
        const std::string path = "referenceapi_lookup/" + std::string(name);
        std::string rest = found;
        if (const std::size_t shared = found.find("has the document"); shared != found.npos)
            rest.erase(found.rfind('\n', shared) + 1,
                       found.find('\n', shared) - found.rfind('\n', shared));
        EXPECT_THAT(rest, expected.empty()
                              ? testing::Matcher<std::string>(IsEmpty())
                              : testing::Matcher<std::string>(StartsWith(path + expected)))
            << name;
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
    const std::string header = ": this one's header is lost, and of its items those that are there "
                               "as well";
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
            taken + "before" + header +
            "\n"
            "referenceapi_lookup/gamma_ja.json:1:1: warning: there is no English file "
            "gamma.json: readers of other languages get nothing\n");
}

TEST_F(RefdocCheck, TellsOfManyFindingsOfAKindHowManyMore) {
    std::string items = R"({"name": 1, "refpurpose": "p", "href": "a.html"})";
    for (int i = 0; i < 999; ++i)
        items += R"(, {"name": 1, "refpurpose": "p", "href": "a.html"})";
    root_.lookupFile("alpha.json", withItems(items));
    EXPECT_THAT(refdoc({"check"}).output,
                AllOf(HasSubstr("(/refItems/19/name)\n"),
                      HasSubstr("alpha.json: error: 980 more of this kind\n"),
                      HasSubstr("\n\n1000 errors, 0 warnings and 0 notes in 2 files\n")));
}

TEST_F(RefdocCheck, PrintsForPrograms) {
    root_.remove("docCatalog/referenceapi_lookup");
    root_.lookupFile("README", "");
    ZipFile().add("a b.json", withItems("\n 1")).write(root_.lookupFolder() / "alpha.zip");
    std::istringstream lines(refdoc({"check", "--json", "--level", "error"}).output);
    std::string line;
    ASSERT_TRUE(std::getline(lines, line));
    const std::string file =
        root_.nativePathOf("docCatalog/referenceapi_lookup/alpha.zip").string();
    EXPECT_EQ(boost::json::parse(line), boost::json::parse(R"({"level": "error",
        "rule": "wrong-kind", "file": ")" + file + R"(", "leaf": "a b.json", "line": 4,
        "column": 2, "pointer": "/refItems/0", "message":
        "refItems[0] is a number, not an object", "cost": "the whole leaf is lost"})"));
    EXPECT_FALSE(std::getline(lines, line)) << line;

    const boost::json::value log = boost::json::parse(refdoc({"check", "--sarif"}).output);
    EXPECT_EQ(log.at("version"), "2.1.0");
    const boost::json::value& run = log.at("runs").at(0);
    const boost::json::array& results = run.at("results").as_array();
    ASSERT_EQ(results.size(), 2u);
    const boost::json::value& place = results[1].at("locations").at(0).at("physicalLocation");
    EXPECT_EQ(place.at("region"), boost::json::parse(R"({"startLine": 4, "startColumn": 2})"));
    const boost::json::value& leaf =
        run.at("artifacts").at(place.at("artifactLocation").at("index").as_int64());
    EXPECT_EQ(leaf.at("location").at("uri"), "/a%20b.json");
    EXPECT_EQ(run.at("artifacts").at(leaf.at("parentIndex").as_int64()).at("location").at("uri"),
              "docCatalog/referenceapi_lookup/alpha.zip");
    for (const boost::json::value& result : results)
        EXPECT_EQ(
            run.at("tool").at("driver").at("rules").at(result.at("ruleIndex").as_int64()).at("id"),
            result.at("ruleId"));
}

TEST_F(RefdocCheck, RefusesWhatItCannotCheck) {
    const std::string root = root_.nativePathOf("").string();
    const struct {
        Words words;
        std::string complaint;
    } cases[] = {
        {{"check", "/does/not/exist"}, "no folder"},
        {{"check", root + "docCatalog"}, "holds no resource files"},
        {{"check", "--level", "fatal"}, "fatal is no level"},
        {{"check", "--json", "--sarif"}, "exclude each other"},
        {{"check", root, "x"}, "x"},
    };
    for (const auto& [words, complaint] : cases) {
        const ProcessResult result = refdoc(words);
        EXPECT_EQ(result.exitCode, 2) << complaint;
        EXPECT_EQ(result.output, "") << complaint;
        EXPECT_THAT(result.errors, HasSubstr(complaint));
    }
}

TEST_F(RefdocCheck, ShowsWhatFilesSayOnlyPrintably) {
    root_.lookupFile("\x1b[31m.json",
                     withItems(R"({"name": "a\u001b[2J\nb", "refpurpose": 1, "href": ""})"));
    const std::string output = onTerminal({"check"}, {{"NO_COLOR", "1"}}).output;
    EXPECT_EQ(output.find('\x1b'), output.npos) << output;
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
    EXPECT_THAT(findings({"--level", "error"}), IsEmpty());
    EXPECT_EQ(refdoc({"check"}).exitCode, 0);
}

TEST(JsonPositions, FindsValuesInOnePass) {
    const std::string text =
        "\r\n{ \"a~/b\" : [ 1 ,{}, [\"]\\\"\", {\"\\u00e9\":\n\ttrue}]]\n,\"x\":-1e5}";
    const std::vector<std::string> pointers{
        "", "/a~0~1b", "/a~0~1b/1", "/a~0~1b/2/0", "/a~0~1b/2/1/é", "/x", "/gone"};
    const auto places = refdoc::findInJson(text, pointers, 0);
    std::vector<std::string> found;
    for (const std::size_t offset : places.offsets)
        found.push_back(text.substr(offset, 3));
    EXPECT_THAT(found, ElementsAre("{ \"", "[ 1", "{},", "\"]\\", "tru", "-1e", "\r\n{"));
    const auto positions = refdoc::positionsOf(text, places.offsets);
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
