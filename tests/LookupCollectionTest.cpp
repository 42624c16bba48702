#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "environment/PathAndText.hpp"
#include "environment/Services.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "support/LogCapture.hpp"
#include "support/LookupFixture.hpp"
#include "support/ZipFile.hpp"

namespace reference::docparser::DocResourceParser {
namespace {

using environment::Services;
using testsupport::lookupText;
using testsupport::makeProducts;
using testsupport::ServiceFailure;
using testsupport::ZipFile;

class LookupCollectionTest : public testsupport::LookupFixture {
protected:
    /// How each leaf of a package is read: 'E' as English, 'J' as localized, '-' not at all.
    std::string readLeaves(const std::string& packageName, const std::vector<std::string>& leaves) {
        std::string held;
        ZipFile package;
        for (std::size_t i = 0; i < leaves.size(); ++i) {
            const std::string key = "key" + std::to_string(i);
            held += (i == 0 ? "" : "|") + key + ":held";
            package.add(leaves[i], leaves[i].ends_with('/') ? "" : lookupText(key + ":leaf n=1"));
        }
        root.remove(root.lookupFolder());
        write({{"0.zip/first.json", held}});
        package.write(root.lookupFolder() / packageName);
        std::string verdicts;
        for (const auto& [key, document] : getResourceLookupFiles().second)
            verdicts += document.items.empty()                        ? '-'
                        : document.header.getProductName() == u"held" ? 'E'
                                                                      : 'J';
        return verdicts;
    }
};

TEST_F(LookupCollectionTest, ASingleLeafFollowsItsPackageOthersTheirOwnNames) {
    struct Case {
        std::string package;
        std::vector<std::string> leaves;
        std::string verdicts;
    };
    for (const auto& [package, leaves, verdicts] : {
             Case{"b.zip", {"b.json"}, "E"},
             Case{"b.zip", {"b_de.json"}, "E"},
             Case{"b_ja.zip", {"b.json"}, "-"},
             Case{"b_ja.zip", {"b_de.json"}, "-"},
             Case{"b_ja.zip", {"b_ja.json"}, "J"},
             Case{"b_ja.zip", {"sub/other_ja.json"}, "J"},
             Case{"b_ja.zip", {"sub_ja/other.json"}, "-"},
             Case{"b.zip", {"b.json", "b_ja.json", "b_de.json"}, "EJ-"},
             Case{"b_ja.zip", {"b_de.json", "b.json", "b_ja.json", "b_xx.json"}, "-EJE"},
             // Folders do not count as leaves; files that are not read do.
             Case{"b.zip", {"d/", "d/b_de.json"}, "-E"},
             Case{"b.zip", {"read.me", "b_de.json"}, "--"},
             Case{"b.zip", {"b_ja.json", ".json"}, "J-"},
             Case{"b_ja.zip", {"b.json", "b.txt"}, "E-"},
             Case{"b.zip", {"b.JSON", "b.Zip", "b.json.bak", "b"}, "----"},
             Case{"b.zip", {"inner.zip"}, "E"},
             Case{"b.zip", {"inner_ja.zip", "d_de/inner.zip", "d/inner_de.zip"}, "JE-"},
             Case{"b.zip", {"same.json", "same.json", "d/same.json"}, "EEE"},
         })
        EXPECT_EQ(readLeaves(package, leaves), verdicts)
            << package << ' ' << testing::PrintToString(leaves);
}

TEST_F(LookupCollectionTest, APackageMayHaveMoreThan65535Leaves) {
    constexpr int kLeaves = 65'537;
    constexpr int kStep = 16;
    ZipFile package;
    for (int leaf = 0; leaf < kLeaves; ++leaf) {
        const std::string number = std::to_string(leaf);
        package.add(number + (leaf % kStep == 0 ? ".json" : ".txt"),
                    lookupText("f:En n" + number + "=1"), testsupport::ZipMethod::Stored);
    }
    package.write(root.lookupFolder() / "p.zip");
    const auto resources = getResourceLookupFiles();
    const auto& items = resources.first.at(u"f").items;
    EXPECT_EQ(items.size(), kLeaves / kStep + 1U);
    EXPECT_TRUE(items.contains(u"n0") && items.contains(u"n65536"));
}

TEST_F(LookupCollectionTest, EveryFileIsReadOncePackagesFirstAndOthersNotAtAll) {
    write({{"b.json", "f:En n=1"},
           {"a.json", "f:En n=1"},
           {"a_de.json", "f:De n=1"},
           {"z.zip/2.json", "f:En n=1"},
           {"z.zip/1_ja.json", "f:En n=1"},
           {"z.zip/1_de.json", "f:En n=1"},
           {"z.zip/text.txt", "f:En n=1"},
           {"y_de.zip/y_de.json", "f:En n=1"},
           {"y_ja.zip/y.json", "f:En n=1"}});
    ZipFile().add("bad.json", "{}").build().breakChecksum(0).write(root.lookupFolder() / "c.zip");
    root.lookupFile("d.json", "no JSON");
    root.lookupFile("e.zip", "no zip");
    enableSeverities(16 | 512);
    const testsupport::LogCapture log;
    collect();
    const std::string inFolder = "Reading file: " + root.lookupFolder().string() + '/';
    EXPECT_EQ(log.messages(), (std::vector<std::string>{
                                  "Reading file: bad", "Error reading file: bad", "Reading file: 2",
                                  "Reading file: 1_ja", inFolder + "a.json", inFolder + "b.json",
                                  inFolder + "d.json"}));
}

TEST_F(LookupCollectionTest, AFailingInstalledTestDropsTheRestOfItsFile) {
    int calls = 0;
    int failingCall = 0;
    Services services = host();
    services.installedTopLevelDocProducts = [&] {
        if (++calls == failingCall)
            throw ServiceFailure();
        return makeProducts({"f"});
    };
    environment::setServices(services);
    struct Case {
        int failingCall;
        std::string result;
        int calls; // one for each document that is not dropped
    };
    const std::string a = "f:A n=1 | q:A n=1 | p:A n=1";
    const std::string b = "f:B n=2,3 | g:B n=1";
    for (const Files& files :
         {Files{{"a.json", a}, {"b.json", b}}, Files{{"a.zip/x.json", a}, {"a.zip/y.json", b}},
          Files{{"a.zip/x.json", a}, {"b.zip/y.json", b}}}) {
        for (const Case& row : {
                 Case{0, "+f:A n=1@A,2@B,3@B | +p:A n=1@A | -g:B n=1@B | -q:A n=1@A", 5},
                 Case{1, "+f:B n=2@B,3@B | -g:B n=1@B", 3},
                 Case{2, "+f:A n=1@A,2@B,3@B | -g:B n=1@B", 4},
                 Case{3, "+f:A n=1@A,2@B,3@B | +p:A n=1@A | -g:B n=1@B", 5},
                 Case{4, "+f:A n=1@A | +p:A n=1@A | -q:A n=1@A", 4},
                 Case{5, "+f:A n=1@A,2@B,3@B | +p:A n=1@A | -q:A n=1@A", 5},
             }) {
            calls = 0;
            failingCall = row.failingCall;
            EXPECT_EQ(collect(files), row.result) << files[0].first << ", call " << failingCall;
            EXPECT_EQ(calls, row.calls) << files[0].first << ", call " << failingCall;
        }
    }
}

TEST_F(LookupCollectionTest, EachDocumentIsAskedForAnewAndEachFileReadInItsTurn) {
    int calls = 0;
    Services services = host();
    services.installedTopLevelDocProducts = [&] {
        root.remove(root.lookupFolder() / "c.json");
        return makeProducts({++calls % 2 == 1 ? "f" : "other"});
    };
    environment::setServices(services);
    EXPECT_EQ(collect({{"a.json", "f:A n=1"}, {"b.json", "f:B n=2,3"}, {"c.json", "f:C n=4"}}),
              "+f:A n=1@A | -f:B n=2@B,3@B");
}

TEST_F(LookupCollectionTest, FailingSupportPackagesCostDocumentsOrTheirPlace) {
    const Files files = {{"a.json", "f:A n=1 | p:A n=1"}, {"b.zip/b.json", "q:B n=1"}};
    Services services = host();
    services.supportPackageRoot = []() -> std::u16string { throw ServiceFailure(); };
    environment::setServices(services);
    EXPECT_EQ(collect(files), "");
    services = host();
    services.installedHardwareSupportPackages =
        [](const auto&) -> std::unordered_set<std::u16string> { throw ServiceFailure(); };
    environment::setServices(services);
    EXPECT_EQ(collect(files), "+f:A n=1@A | -p:A n=1@A | -q:B n=1@B");
}

TEST_F(LookupCollectionTest, LanguageServicesMayThrowOrReplaceTheRoots) {
    Services services = host();
    services.docLanguage = []() -> std::u16string { throw ServiceFailure(); };
    environment::setServices(services);
    EXPECT_THROW(getResourceLookupFiles(), ServiceFailure);
    services.supportedDocLanguages = []() -> std::vector<std::u16string> { throw 1; };
    environment::setServices(services);
    EXPECT_THROW(getResourceLookupFiles(), int);
    // The collection keeps the roots that it began with.
    services = host();
    services.docLanguage = [] {
        setReferenceRoot(u"/nowhere");
        return std::u16string(u"ja");
    };
    environment::setServices(services);
    EXPECT_EQ(collect({{"a.json", "f:A n=1"}}), "+f:A n=1@A");
    EXPECT_EQ(collect(), "");
}

} // namespace
} // namespace reference::docparser::DocResourceParser
