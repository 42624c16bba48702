// The client's check must report exactly what the library loses among many files and packages.

#include <algorithm>
#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include <boost/json/object.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>
#include <gtest/gtest.h>

#include "refdoc/catalog/ProductSurvey.hpp"
#include "refdoc/text/Text.hpp"
#include "support/CheckAgreementFixture.hpp"
#include "support/RandomRoot.hpp"

namespace {

namespace json = boost::json;
using refdoc::Fault;
using refdoc::Finding;
using refdoc::Loss;
using testsupport::Audience;
using testsupport::Random;
using testsupport::RandomFile;
using testsupport::RandomText;

/// Key, name, href, purpose, type and deprecation.
using Record = std::tuple<std::string, std::string, std::string, std::string, std::string, bool>;
using Records = std::set<Record>;
using Link = std::tuple<std::string, std::string, std::string>;
using Links = std::set<Link>;

Link linkOf(const Record& record) {
    return {std::get<0>(record), std::get<1>(record), std::get<2>(record)};
}

/// The losses that the check reports for one file or entry.
class Losses {
public:
    Losses(const std::vector<Finding>& findings, const std::string& file,
           const std::string& entry) {
        for (const Finding& finding : findings)
            if (finding.file.ends_with('/' + file) &&
                (finding.entry == entry || finding.loss == Loss::File))
                add(finding);
    }

    bool textIsLost() const { return textIsLost_; }
    bool isLost(const std::string& pointer) const { return lost_.contains(pointer); }
    bool isReplaced(const std::string& pointer, const std::string& readers) const {
        return replaced_.contains({pointer, readers});
    }

private:
    void add(const Finding& finding) {
        textIsLost_ = textIsLost_ || finding.loss == Loss::File || finding.loss == Loss::Entry;
        if (finding.loss == Loss::Document || finding.loss == Loss::Item)
            lost_.insert(finding.pointer);
        else if (finding.fault == Fault::ReplacedItem)
            replaced_.emplace(finding.pointer,
                              finding.message.substr(std::string("readers of ").size(), 2));
    }

    bool textIsLost_ = false;
    std::set<std::string> lost_;
    std::set<std::pair<std::string, std::string>> replaced_;
};

class RefdocCheckRootAgreement : public testsupport::RefdocCheckAgreement {
protected:
    using Delivery = std::map<std::string, Records>; // by language

    Delivery delivered() {
        Delivery delivery;
        for (const char* code : {"en", "ja", "de"}) {
            language = refdoc::fromUtf8(code);
            const auto resources =
                reference::docparser::DocResourceParser::getResourceLookupFiles();
            for (const auto* documents : {&resources.first, &resources.second})
                for (const auto& [key, document] : *documents)
                    for (const auto& [name, lookups] : document.items)
                        for (const auto& lookup : lookups)
                            delivery[code].insert(recordOf(key, lookup));
        }
        return delivery;
    }

    /// The client merges for all languages at once, the library for one at a time.
    void expectSurveyAgreement() {
        std::map<std::u16string, reference::docparser::LookupResources> delivered;
        for (const std::u16string code : {u"en", u"ja", u"de"}) {
            language = code;
            delivered[code] = reference::docparser::DocResourceParser::getResourceLookupFiles();
            delivered[code].first.merge(delivered[code].second);
        }
        for (const auto& [code, resources] : delivered) {
            language = code;
            for (const refdoc::SurveyedProduct& product : refdoc::surveyProducts().products)
                expectProduct(product, code, resources.first, delivered[u"en"].first);
        }
    }

    void expectAgreement(const std::vector<RandomFile>& files) {
        root.remove("docCatalog");
        for (const RandomFile& file : files)
            root.lookupFile(file.name, file.bytes);
        expectSurveyAgreement();
        const std::vector<Finding> findings = check();
        Delivery delivery = delivered();
        Delivery explained;
        const auto forEachRecord = [&](const auto& take) {
            for (const RandomFile& file : files)
                for (const RandomText& text : file.texts)
                    takeRecords(file, text, Losses(findings, file.name, text.leaf), take);
        };
        Links localized; // by readers, key and name
        forEachRecord([&](const Audience& audience, const Record& record, auto&&...) {
            for (const std::string& readers : audience.readers) {
                explained[readers].insert(record);
                if (readers == audience.language)
                    localized.emplace(readers, std::get<0>(record), std::get<1>(record));
            }
        });
        forEachRecord([&](const Audience& audience, const Record& record, const Losses& losses,
                          const std::string& pointer) {
            for (const std::string& readers : audience.readers)
                expectRecord(
                    audience, readers, record, pointer, losses, delivery[readers],
                    localized.contains({readers, std::get<0>(record), std::get<1>(record)}));
        });
        for (const auto& [code, records] : delivery)
            for (const Record& record : records)
                EXPECT_TRUE(explained[code].contains(record))
                    << code << ": " << std::get<0>(record) << ' ' << std::get<1>(record);
    }

private:
    using Documents = decltype(reference::docparser::LookupResources::first);

    static void expectProduct(const refdoc::SurveyedProduct& product, const std::u16string& code,
                              const Documents& own, const Documents& english) {
        SCOPED_TRACE(refdoc::toUtf8(code + u": " + product.key));
        const auto found = own.find(product.key);
        std::size_t count = 0;
        if (found != own.end())
            for (const auto& [name, lookups] : found->second.items)
                count += lookups.size();
        EXPECT_EQ(product.records, count);
        const auto counterpart = english.find(product.key);
        const bool isListed = std::ranges::find(product.languages, code) != product.languages.end();
        const auto textsOf = [](const auto& document) {
            std::vector<std::u16string> texts{document.header.getProductName()};
            for (const auto& [name, lookups] : document.items)
                for (const auto& lookup : lookups)
                    texts.insert(texts.end(), {name, lookup.getPurpose(), lookup.getHref()});
            return texts;
        };
        EXPECT_EQ(isListed,
                  found != own.end() && (code == u"en" || counterpart == english.end() ||
                                         textsOf(found->second) != textsOf(counterpart->second)));
        if (found != own.end()) {
            EXPECT_EQ(product.name, found->second.header.getProductName());
        }
    }

    static Record recordOf(const std::u16string& key,
                           const reference::property::RefItemLookup& lookup) {
        using fl::i18n::to_string;
        return {to_string(key),
                to_string(lookup.getName()),
                to_string(lookup.getHref()),
                to_string(lookup.getPurpose()),
                std::string(lookup.getEntityType().toString()),
                lookup.isDeprecated()};
    }

    static Record recordOf(const std::string& key, const json::object& item) {
        const auto text = [&item](const char* member) {
            return std::string(item.at(member).as_string());
        };
        const json::value* type = item.if_contains("type");
        const bool isKnown = type != nullptr && (*type == "class" || *type == "tool");
        return {key,
                text("name"),
                asRead(item.at("href")),
                text("refpurpose"),
                isKnown ? text("type") : "unknown",
                item.contains("deprecated")};
    }

    /// Calls `take` with each record of a text unless its document is reported as lost.
    template <typename Take>
    static void takeRecords(const RandomFile& file, const RandomText& text, const Losses& losses,
                            const Take& take) {
        const Audience audience = testsupport::audienceOf(file, text);
        EXPECT_TRUE(!audience.readers.empty() || losses.textIsLost() || text.leaf.ends_with(".txt"))
            << file.name << ':' << text.leaf;
        if (audience.readers.empty() || losses.textIsLost())
            return;
        SCOPED_TRACE(file.name + ':' + text.leaf + ": " + text.content);
        const auto takeDocument = [&](const json::value& document, const char* keyMember,
                                      const std::string& pointer) {
            if (losses.isLost(pointer))
                return;
            std::size_t index = 0;
            for (const json::value& item : document.at("refItems").as_array())
                take(audience, recordOf(asRead(document.at(keyMember)), item.as_object()), losses,
                     testsupport::numbered(pointer + "/refItems/", index++));
        };
        const json::value resource = json::parse(text.content);
        takeDocument(resource, "helpFolder", "");
        if (const json::value* packages = resource.as_object().if_contains("supportPackages"))
            for (std::size_t i = 0; i < packages->as_array().size(); ++i)
                takeDocument(packages->at(i), "baseCode",
                             testsupport::numbered("/supportPackages/", i));
    }

    /// An English record that fills in gives way to a localized one with the same link.
    static void expectRecord(const Audience& audience, const std::string& readers,
                             const Record& record, const std::string& pointer, const Losses& losses,
                             const Records& records, bool isLocalized) {
        const bool hasLink =
            std::any_of(records.begin(), records.end(),
                        [&record](const Record& other) { return linkOf(other) == linkOf(record); });
        const bool isForAll = audience.readers.size() > 1;
        if (readers != audience.language && isForAll) {
            EXPECT_TRUE(losses.isLost(pointer) || losses.isReplaced(pointer, readers) != hasLink)
                << readers << pointer;
            return;
        }
        const bool givesWay = readers != audience.language && isLocalized && hasLink;
        EXPECT_NE(losses.isLost(pointer), givesWay || records.contains(record))
            << readers << pointer;
    }
};

TEST_F(RefdocCheckRootAgreement, OnRandomRoots) {
    for (const unsigned seed : {1U, 2U, 3U}) {
        Random random(seed);
        for (int i = 0; i < 300 && !HasFailure(); ++i) {
            SCOPED_TRACE(testsupport::numbered("root ", static_cast<std::size_t>(i)));
            expectAgreement(testsupport::randomFiles(random));
        }
    }
}

} // namespace
