// The client's check must report exactly what the library loses.

#include <algorithm>
#include <cstddef>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>
#include <gtest/gtest.h>

#include "support/CheckAgreementFixture.hpp"
#include "support/RandomRoot.hpp"
#include "support/RefItemDescription.hpp"

namespace {

namespace json = boost::json;
using refdoc::Catalog;
using testsupport::keptInputs;
using testsupport::kLookup;
using testsupport::mutated;
using testsupport::mutatedText;
using testsupport::Random;
using testsupport::RefdocCheckAgreement;

const json::value kReference = json::parse(R"({
    "productName": "main", "baseCode": "B", "helpFolder": "m", "helpLocation": "h",
    "refItems": [{
        "href": "h", "refpurpose": "p", "packagename": "k", "introduced": "1", "description": "d",
        "refentity": [{"name": "a", "type": "class", "fcntype": "method"}],
        "appthumbnail": {"fileref": "f", "alt": "a"}, "deprecationstatus": "none",
        "syntaxgroup": [{"title": "t", "syntax": ["s"], "syntaxtype": "plain"}],
        "inputgroup": [
            {"title": "t", "inputs": [{"name": "i", "purpose": "p", "value": ["v"], "htmlid": "i",
                                       "syntaxtype": "plain", "defaultvalue": "d"}]},
            {"title": 7, "inputs": {}, "namevaluepairs": [
                {"title": "t", "inputs": [{"name": "n", "purpose": "p"}], "namevaluepairs": 8}]}],
        "outputs": [{"name": "o", "purpose": "p", "value": [], "syntaxtype": "plain",
                     "defaultvalue": 9}],
        "classpropertygroup": [{"title": "t", "classproperty": [
            {"name": "c", "purpose": "p", "value": ["v"], "defaultvalue": "d", "htmlid": 1}]}],
        "seealso": [{"url": "u", "name": "n"}],
        "examples": [{"url": "u", "title": "t", "open_command": "o"}],
        "parameters": [{"name": "p", "purpose": "p", "defaultvalue": "d", "syntaxtype": {}}]}],
    "supportPackages": [
        {"productName": "one", "baseCode": "1", "helpFolder": "m", "helpLocation": "",
         "refItems": [{"href": "h", "refpurpose": "p"}], "supportPackages": 7},
        {"productName": "two", "baseCode": "2", "helpFolder": "m", "helpLocation": "",
         "refItems": []}]})");

TEST_F(RefdocCheckAgreement, OnKeptInputs) {
    for (const std::string& text : keptInputs("lookup_document"))
        expectAgreement(Catalog::Lookup, text);
    for (const std::string& text : keptInputs("reference_document"))
        expectAgreement(Catalog::Reference, text);
}

TEST_F(RefdocCheckAgreement, OnEverySingleFaultOfAMember) {
    for (const auto& [catalog, sound] :
         {std::pair(Catalog::Lookup, kLookup), std::pair(Catalog::Reference, kReference)}) {
        for (const std::string& pointer : testsupport::allPointers(sound)) {
            if (!testsupport::isListElement(pointer))
                expectAgreement(catalog,
                                json::serialize(testsupport::withoutMember(sound, pointer)));
            for (const json::value& other :
                 testsupport::valuesOfOtherKinds(sound.at_pointer(pointer)))
                expectAgreement(catalog,
                                json::serialize(testsupport::withValue(sound, pointer, other)));
        }
    }
}

TEST_F(RefdocCheckAgreement, OnMutatedFiles) {
    for (const unsigned seed : {1U, 2U, 3U}) {
        Random random(seed);
        for (int i = 0; i < 500; ++i) {
            expectAgreement(Catalog::Lookup, mutatedText(kLookup, random));
            expectAgreement(Catalog::Reference, mutatedText(kReference, random));
        }
    }
}

/// Items of a localized file replace the English items with the same hrefs.
TEST_F(RefdocCheckAgreement, OnLocalizedReferenceFiles) {
    using Item = std::tuple<std::string, std::string, std::string>; // key, href, purpose
    Random random(5);
    for (int i = 0; i < 400 && !HasFailure(); ++i) {
        const std::string texts[] = {testsupport::randomText(random),
                                     testsupport::randomText(random)};
        root.remove("docCatalog");
        root.referenceFile("m.json", texts[0]);
        root.referenceFile("m_ja.json", texts[1]);
        SCOPED_TRACE(texts[0] + '\n' + texts[1]);
        const std::vector<refdoc::Finding> findings = check();
        std::multiset<Item> expected;
        std::set<std::pair<std::string, std::string>> localized;
        for (const std::size_t file : {1U, 0U}) {
            const std::string name = file == 0 ? "/m.json" : "/m_ja.json";
            for (const Item& item : itemsLeft(texts[file], findings, name)) {
                if (file == 1)
                    localized.emplace(std::get<0>(item), std::get<1>(item));
                if (file == 1 || !localized.contains({std::get<0>(item), std::get<1>(item)}))
                    expected.insert(item);
            }
        }
        language = u"ja";
        std::multiset<Item> delivered;
        for (const auto& [key, document] :
             reference::docparser::DocResourceParser::getResourceFile(u"m"))
            for (const auto& [href, items] : document.items)
                for (const auto& item : items)
                    delivered.emplace(fl::i18n::to_string(key), fl::i18n::to_string(href),
                                      fl::i18n::to_string(item.refPurpose));
        EXPECT_EQ(expected, delivered);
    }
}

/// The check must report exactly those non-ASCII texts that the library garbles.
TEST_F(RefdocCheckAgreement, OnTextsBeyondAscii) {
    for (const std::string& pointer : testsupport::allPointers(kReference)) {
        if (!kReference.at_pointer(pointer).is_string())
            continue;
        root.referenceFile("m.json",
                           json::serialize(testsupport::withValue(kReference, pointer, "é")));
        std::string delivered;
        for (const auto& [key, document] :
             reference::docparser::DocResourceParser::getResourceFile(u"m")) {
            delivered += fl::i18n::to_string(key + document.header.getBaseCode() +
                                             document.header.getHelpFolder() +
                                             document.header.getHelpLocation());
            for (const auto& [href, items] : document.items)
                delivered +=
                    fl::i18n::to_string(href) + json::serialize(testsupport::describeAll(items));
        }
        const std::vector<refdoc::Finding> findings = check();
        const bool isReported =
            std::any_of(findings.begin(), findings.end(), [&](const auto& finding) {
                return finding.fault == refdoc::Fault::GarbledText && finding.pointer == pointer;
            });
        EXPECT_EQ(isReported, delivered.find("Ã©") != delivered.npos) << pointer;
    }
}

} // namespace
