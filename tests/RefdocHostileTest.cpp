#include <numeric>
#include <string>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/RefdocFixture.hpp"
#include "support/ZipFile.hpp"

namespace {

using testing::HasSubstr;
using testing::Not;
using testsupport::ProcessResult;

using RefdocHostile = testsupport::Refdoc;

/// Characters that start a line or reverse what follows on some terminals.
const std::vector<std::string> kForging{"\u0085", "\u009b", "\u061c", "\u200e", "\u200f",
                                        "\u2028", "\u2029", "\u202a", "\u202e", "\u2066",
                                        "\u2069", "\x1b",   "\x7f",   "\r",     "\nforged"};

TEST_F(RefdocHostile, PrintsNoControlsFromDocuments) {
    const std::string forging =
        "zap" + std::accumulate(kForging.begin(), kForging.end(), std::string());
    const boost::json::array items{{{"name", forging},
                                    {"href", forging},
                                    {"refpurpose", forging},
                                    {"description", forging},
                                    {"refentity", {{{"name", forging}}}}},
                                   {{"name", "tea"}, {"href", ""}, {"refpurpose", forging}}};
    for (const std::string& key : {forging, forging + '2'}) {
        const std::string document =
            boost::json::serialize(boost::json::object{{"productName", forging},
                                                       {"baseCode", forging},
                                                       {"helpFolder", key},
                                                       {"helpLocation", forging},
                                                       {"refItems", items}});
        root_.lookupFile(key + ".json", document);
        root_.lookupFile(key + "_ja.json", document + forging);
        root_.referenceFile(key + ".json", document);
    }
    const std::string similar = forging + 'x';
    for (const Words& arguments :
         {Words{"lookup", "--all"}, Words{"lookup", "--all", similar}, Words{"lookup", forging},
          Words{"lookup", "x", "--product", similar}, Words{"lookup", "x", "--type", forging},
          Words{"lookup", "x", "--limit", forging}, Words{"products"}, Words{"show", forging},
          Words{"show", forging, forging}, Words{"show", forging, similar}, Words{"show", similar},
          Words{"show", "tea"}, Words{"show", "x", "--root", forging}, Words{forging},
          Words{"check"}, Words{"complete", "refdoc --root . lookup --all z"}})
        for (const std::string format : {"--verbose", "--json", "--sarif"}) {
            if (format == "--sarif" && arguments.front() != "check")
                continue;
            Words words = arguments;
            words.insert(words.begin() + 1, format);
            const ProcessResult result = refdoc(words);
            for (const std::string& character : kForging)
                EXPECT_THAT(result.output + result.errors, Not(HasSubstr(character)))
                    << testing::PrintToString(words);
        }
    const auto json = boost::json::parse(refdoc({"lookup", "--all", "--json", forging}).output);
    EXPECT_EQ(json.at("records").at(0).at("name").as_string(), forging);
}

/// Each translation replaces the records so far, which complete it; they must do so only once.
TEST_F(RefdocHostile, MergesManyTranslations) {
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

} // namespace
