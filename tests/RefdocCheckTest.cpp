#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "support/RefdocCheckFixture.hpp"

namespace {

using testsupport::kPage;
using testsupport::kSpin;
using testsupport::package;
using testsupport::ProcessResult;
using testsupport::RefdocCheck;
using testsupport::withItems;

struct Case {
    std::string file;
    std::string text;
    std::string findings;
};

TEST_F(RefdocCheck, ReportsNothingForSoundFiles) {
    const ProcessResult result = refdoc({"check"});
    EXPECT_EQ(result.output, "0 errors, 0 warnings and 0 notes in 2 files\n");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.exitCode, 0);
}

/// The place where the text stops being JSON, and the likely mistake.
TEST_F(RefdocCheck, ReportsWhyATextIsNotJson) {
    const std::string inQuotes = "a line break or control character within a string: write it as "
                                 R"(\n, \t or \u, or add the missing closing quote)";
    const std::string escape = R"(an unknown escape: write a backslash as \\)";
    const std::string word = "a word other than true, false and null: strings need double quotes";
    const struct {
        std::string text;
        std::string place;
        std::string cause;
    } cases[] = {
        {"", "1:1", "the text is empty"},
        {"\n \t", "2:3", "the text is empty"},
        {"\xEF\xBB\xBF{}", "1:1", "the text begins with a byte-order mark"},
        {std::string("\xFF\xFE{\0", 4), "1:1", "the text is UTF-16 or UTF-32, not UTF-8"},
        {std::string("\0{\0}", 4), "1:1", "the text is UTF-16 or UTF-32, not UTF-8"},
        {"PK\3\4...", "1:1", "the content is a zip package: its name must end with .zip"},
        {"\x1F\x8B\x08", "1:1", "the content is compressed"},
        {std::string(33, '['), "1:33", "the text is nested deeper than 32"},
        {"{\"a\": \"\xFF\"}", "1:8", "not JSON: a byte that is not UTF-8"},
        {"{\"a\": \"\xE4h\"}", "1:8", "not JSON: a byte that is not UTF-8"},
        {"{\"a\": \"é\xE4\"}", "1:9", "not JSON: a byte that is not UTF-8"},
        {"{\"a\": \"é\n\"}", "1:9", "not JSON: " + inQuotes},
        {"{\"a\": \"C:\\docs\"}", "1:11", "not JSON: " + escape},
        {R"(["\\ud8ab\x"])", "1:11", "not JSON: " + escape},
        {"[\"\\ud83d it\"]", "1:9",
         R"(not JSON: half of a surrogate pair: \uD800 to \uDFFF come in pairs)"},
        {"{\"a\":\n \"é\" ,}", "2:7", "not JSON: a comma before a closing bracket"},
        {"[1, 2,\n]", "2:1", "not JSON: a comma before a closing bracket"},
        {"{\"a\": 1 // one\n}", "1:9", "not JSON: JSON has no comments"},
        {"# x\n{}", "1:1", "not JSON: JSON has no comments"},
        {"{'a': 1}", "1:2", "not JSON: strings and names need double quotes, not single ones"},
        {"{\n1", "2:1", "not JSON: the name of a member, in double quotes, is missing"},
        {"{a: 1}", "1:2", "not JSON: the name of a member, in double quotes, is missing"},
        {"{\"a\": 1\n \"b\": 2}", "2:2", "not JSON: a comma or colon is missing"},
        {"{\"a\" \"b\"}", "1:6", "not JSON: a comma or colon is missing"},
        {"[{} {}]", "1:5", "not JSON: a comma or colon is missing"},
        {"[True]", "1:2", "not JSON: " + word},
        {"[trve]", "1:4", "not JSON: " + word},
        {"[01]", "1:3", "not JSON: numbers are not written like this"},
        {"[+1]", "1:2", "not JSON: numbers are not written like this"},
        {"[1\u3000]", "1:3",
         "not JSON: \"\u3000\" (U+3000) stands outside of a string: JSON's own signs and blanks "
         "are "
         "ASCII"},
        {"[1,, 2]", "1:4", "not JSON: a value is missing before the comma"},
        {"{\"a\" = 1}", "1:6", "not JSON: a colon belongs between a name and its value"},
        {"[\"a \"b\" c\"]", "1:6",
         R"(not JSON: a comma or colon is missing, or a quote within a string is not written as \")"},
        {"[:]", "1:2", "not JSON: syntax error"},
        {withItems(kSpin) + "\nx", "4:1", "not JSON: there is more after its end"},
        {withItems(kSpin).substr(0, 70), "2:10", "not JSON: the text ends too early"},
    };
    for (const auto& [text, place, cause] : cases) {
        root_.lookupFile("alpha.json", text);
        EXPECT_EQ(findings(), "referenceapi_lookup/alpha.json:" + place + ": error: " + cause +
                                  "; the whole file is lost\n")
            << text;
    }
}

TEST_F(RefdocCheck, ReportsWhatCostsALookupFile) {
    const std::string lost = "; the whole file is lost";
    const Case cases[] = {
        {"", "[]", ":1:1: error: the document is an array, not an object" + lost},
        {"", withItems("7"),
         ":3:1: error: refItems[0] is a number, not an object" + lost + " (/refItems/0)"},
        {"", withItems(R"({"name": "日本", "refpurpose": "p", "href": null})"),
         ":3:43: error: 日本: href is null, not a string" + lost + " (/refItems/0/href)"},
        {"", withItems(kSpin + R"(, {"name": "n", "refpurpose": "p"})"),
         ":3:56: error: n: href is missing" + lost + " (/refItems/1)"},
        {"", withItems(R"({"name": "n", "refPurpose": "p", "href": "a.html"})"),
         ":3:1: error: n: refpurpose is missing (there is \"refPurpose\")" + lost +
             " (/refItems/0)"},
        {"", withItems(kSpin, R"(, "supportPackages": {})"),
         ":3:76: error: supportPackages is an object, not an array" + lost + " (/supportPackages)"},
        {"", withItems(kSpin, ", \"supportPackages\": [\n[]]"),
         ":4:1: error: supportPackages[0] is an array, not an object" + lost +
             " (/supportPackages/0)"},
    };
    for (const auto& [file, text, expected] : cases) {
        root_.lookupFile("alpha.json", text);
        EXPECT_EQ(findings(), "referenceapi_lookup/alpha.json" + expected + '\n') << text;
        EXPECT_EQ(refdoc({"check"}).exitCode, 1);
    }
}

TEST_F(RefdocCheck, ReportsWhatCostsAFullReferenceFile) {
    const std::string lost = "; the whole file is lost (/refItems/0/";
    const auto item = [](const std::string& members) {
        return withItems(R"({"href": "a.html", "refpurpose": "p",)" + ('\n' + members) + "}");
    };
    const Case cases[] = {
        {"", item(R"("description": 1)"),
         ":4:16: error: a.html: description is a number, not a string" + lost + "description)"},
        {"", item(R"("appthumbnail": null)"),
         ":4:17: error: a.html: appthumbnail is null, not an object" + lost + "appthumbnail)"},
        {"", item(R"("syntaxgroup": [{"title": "", "syntax": [true]}])"),
         ":4:42: error: a.html: syntax[0] is a boolean, not a string" + lost +
             "syntaxgroup/0/syntax/0)"},
        {"", item(R"("inputgroup": [{"inputs": []}])"),
         ":4:16: error: a.html: title is missing" + lost + "inputgroup/0)"},
        {"", item(R"("inputgroup": [{"title": 1, "namevaluepairs": [{"title": 2}]}])"),
         ":4:58: error: a.html: title is a number, not a string" + lost +
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

TEST_F(RefdocCheck, ReportsWhatAppearsDifferentlyThanIntended) {
    const auto spin = [](const std::string& members) {
        return withItems(kSpin.substr(0, kSpin.size() - 1) + ", " + members + '}');
    };
    const std::string deadEnd =
        " leads nowhere: no full reference file documents the page, and there is no such file";
    const Case cases[] = {
        {"lookup", spin(R"("type": "Fuction")"),
         R"(:3:63: warning: spin: type is "Fuction", which is not one of its values (did you mean )"
         R"("function"?); it counts as "unknown" (/refItems/0/type))"},
        {"lookup", spin(R"("fcntype": [])"),
         R"(:3:66: warning: spin: fcntype is an array, not a string; it counts as "unspecified" )"
         R"((/refItems/0/fcntype))"},
        {"lookup", spin(R"("\u006eame": "turn")"),
         R"(:3:55: warning: turn: "name" is there twice: only the last one counts )"
         R"((/refItems/0/name))"},
        {"lookup", spin(R"("typ": "class", "style": 1, "names": [])"),
         R"(:3:62: warning: spin: "typ" is not read (did you mean "type"?) (/refItems/0/typ))"},
        {"lookup",
         withItems(kSpin, ", \"supportPackages\": [\n" +
                              package("C").insert(1, R"("supportPackages": [],)") + "]"),
         ":4:21: warning: supportPackages is not read: a support package has none of its own "
         "(/supportPackages/0/supportPackages)"},
        {"reference", withItems(R"({"href": "a.html", "refpurpose": "p", "refEntity": [],
"inputgroup": [{"inputs": [], "namevaluepairs": [{"title": "t", "input": [], "inputs": []}]}]})"),
         ":3:52: warning: a.html: \"refEntity\" is not read (did you mean \"refentity\"?) "
         "(/refItems/0/refEntity)\n"
         "referenceapi/alpha.json:4:27: warning: a.html: inputs is not read beside namevaluepairs "
         "(/refItems/0/inputgroup/0/inputs)"},
        {"lookup", withItems(R"({"name": "spin", "refpurpose": "p", "href": "b.html#x"})"),
         ":3:45: warning: spin: the href \"b.html#x\"" + deadEnd + " (/refItems/0/href)"},
        {"lookup", withItems(R"({"name": "spin", "refpurpose": "p", "href": "../alpha.json"})"),
         ":3:45: warning: spin: the href \"../alpha.json\"" + deadEnd + " (/refItems/0/href)"},
        {"lookup", withItems(R"({"name": "s", "refpurpose": "p", "href": "./x/../a.html?q#x"})"),
         ""},
        {"lookup", withItems(R"({"name": "s", "refpurpose": "p", "href": "#x"})"), ""},
        {"lookup", withItems(R"({"name": "s", "refpurpose": "p", "href": "https://x.y/z"})"), ""},
        {"lookup", withItems(R"({"name": "s", "refpurpose": "p", "href": "a%2ehtml"})"), ""},
        {"lookup", withItems(R"({"name": "s", "refpurpose": "p", "href": "page.html"})"), ""},
        {"lookup", withItems(R"({"name": "s", "refpurpose": "p", "href": "..x/page.html"})"), ""},
        {"lookup", withItems(R"({"name": "s", "refpurpose": "p", "href": "1%25%20%zz%4.html"})"),
         ""},
        {"lookup",
         withItems(kSpin, ", \"supportPackages\": [" + package("B") + ",\n" + package("B") + "," +
                              package("alpha") + "]"),
         ":4:1: error: the key \"B\" already belongs to /supportPackages/0; the document is lost "
         "(/supportPackages/1)\n"
         "referenceapi_lookup/alpha.json:4:95: error: the key \"alpha\" already belongs to the "
         "main document's help folder; the document is lost (/supportPackages/2)"},
        {"reference", withItems(R"({"href": "a.html", "refpurpose": "p", "introduced": "für",
"refentity": [{"name": "n", "type": "tool"}],
"inputgroup": [{"title": "ä", "inputs": [{"name": "ä", "purpose": "ä"}]}],
"outputs": [{"name": "ä", "purpose": "p", "url": "ä"}], "foo": [{"url": "ä"}]})"),
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
    root_.writeFile("..x/page.html", "");
    root_.writeFile("1% %zz%4.html", "");
    for (const auto& [kind, text, expected] : cases) {
        reset();
        const bool isLookup = kind == "lookup";
        isLookup ? root_.lookupFile("alpha.json", text) : root_.referenceFile("alpha.json", text);
        const std::string file =
            isLookup ? "referenceapi_lookup/alpha.json" : "referenceapi/alpha.json";
        EXPECT_EQ(findings(), expected.empty() ? "" : file + expected + '\n') << text;
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
