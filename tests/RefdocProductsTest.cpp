#include <string>

#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/RefdocLookupFixture.hpp"
#include "support/ZipFile.hpp"

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testsupport::ProcessResult;

using RefdocProducts = testsupport::RefdocLookup;

TEST_F(RefdocProducts, ListsInstalledAndDocumentedProducts) {
    EXPECT_EQ(refdoc({"products"}).output,
              "AB\tAlpha Board\tpackage\tyes\t1\ten\talpha.json alpha_ja.json\n"
              "AC\tAlpha Card\tpackage\tno\t1\ten\talpha.json alpha_ja.json\n"
              "alpha\tAlpha Tools\tproduct\tyes\t12\ten ja\talpha.json alpha_ja.json\n"
              "beta\tBeta\tproduct\tno\t2\ten\tbeta.json\n"
              "gamma\tGamma \uFFFD[2J\tproduct\tyes\t0\t\t\n"
              "zeta\tZeta\tproduct\tyes\t1\ten de\tzeta.zip\n"
              "\t\t\t\t\t\tstray.json\n");
    EXPECT_THAT(refdoc({"products", "--language", "ja"}).output,
                HasSubstr("alpha\tアルファ\tproduct\tyes\t12\t"));
}

TEST_F(RefdocProducts, KnowsProductsThatAreDocumentedInOneLanguageOnly) {
    root_.lookupFile("delta_fr.json", R"({"productName": "Delta en France", "baseCode": "D",
        "helpFolder": "delta", "helpLocation": "h",
        "refItems": [{"name": "d", "refpurpose": "p", "href": "h"}]})");
    EXPECT_THAT(refdoc({"products"}).output,
                HasSubstr("delta\tDelta en France\tproduct\tno\t0\tfr\tdelta_fr.json\n"));
    EXPECT_THAT(refdoc({"products", "--language", "fr"}).output,
                HasSubstr("delta\tDelta en France\tproduct\tno\t1\tfr\tdelta_fr.json\n"));
}

TEST_F(RefdocProducts, PrintsJson) {
    const boost::json::value value = boost::json::parse(refdoc({"products", "--json"}).output);
    EXPECT_EQ(value.at("language"), "en");
    EXPECT_EQ(value.at("otherFiles"), boost::json::parse(R"(["stray.json"])"));
    EXPECT_EQ(value.at("products").at(2), boost::json::parse(R"({"key": "alpha",
        "name": "Alpha Tools", "displayName": "Alpha", "kind": "product", "installed": true,
        "records": 12, "languages": ["en", "ja"], "files": ["alpha.json", "alpha_ja.json"]})"));
}

TEST_F(RefdocProducts, ReadsEachFileOnce) {
    const std::string log = refdoc({"products", "--verbose"}).errors;
    std::size_t reads = 0;
    for (std::size_t at = log.find("/beta.json"); at != log.npos;
         at = log.find("/beta.json", at + 1))
        ++reads;
    EXPECT_EQ(reads, 1u) << log;
}

/// Each translation replaces the records so far, which complete it; they must do so only once.
TEST_F(RefdocProducts, MergesManyTranslations) {
    const auto file = [](const std::string& items) {
        return R"({"productName": "M", "baseCode": "", "helpFolder": "m", "helpLocation": "",
                   "refItems": [)" +
               items + "]}";
    };
    const auto item = [](int number) {
        return R"({"name": "n", "refpurpose": "", "href": ")" + std::to_string(number) + "\"}";
    };
    std::string english = item(0);
    for (int number = 1; number < 400'000; ++number)
        english += ',' + item(number);
    testsupport::ZipFile package;
    package.add("a.json", file(english));
    for (int number = 0; number < 40'000; ++number)
        package.add(std::to_string(number) + "_ja.json", file(item(number)));
    package.write(root_.lookupFolder() / "m.zip");
    EXPECT_THAT(refdoc({"products"}).output, HasSubstr("m\tM\tproduct\tno\t400000\ten ja\t"));
}

TEST_F(RefdocProducts, HasTitlesOnTerminalsAndSaysWhenThereIsNothing) {
    EXPECT_THAT(onTerminal({"products"}, {{"NO_COLOR", "1"}}, 100).output,
                AllOf(HasSubstr("KEY "), HasSubstr("FILES\n"), HasSubstr("\n  "),
                      HasSubstr("alpha  Alpha Tools  product  yes        12       en ja      ")));
    root_.remove("docCatalog");
    root_.remove("installedProducts.json");
    root_.remove("supportPackages");
    const ProcessResult nothing = refdoc({"products"});
    EXPECT_EQ(nothing.exitCode, 1);
    EXPECT_THAT(nothing.errors, HasSubstr("nothing is installed"));
}

} // namespace
