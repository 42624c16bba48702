#pragma once

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <boost/json/object.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>
#include <gtest/gtest.h>

#include "environment/PathAndText.hpp"
#include "refdoc/Schemas.hpp"
#include "refdoc/catalog/CatalogFolder.hpp"
#include "refdoc/check/RootCheck.hpp"
#include "refdoc/check/findings/Finding.hpp"
#include "refdoc/format/Format.hpp"
#include "refdoc/format/FormatWalk.hpp"
#include "refdoc/text/Text.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "support/LookupFixture.hpp"
#include "support/RandomDamage.hpp"
#include "support/SchemaJudge.hpp"

namespace testsupport {

inline const boost::json::value kLookup = boost::json::parse(R"({
    "productName": "main", "baseCode": "B", "helpFolder": "m", "helpLocation": "h", "x": {"y": []},
    "refItems": [
        {"name": "a", "refpurpose": "p", "href": "h", "type": "class", "fcntype": "method"},
        {"name": "b", "refpurpose": "é", "href": "h", "deprecated": false}],
    "supportPackages": [
        {"productName": "one", "baseCode": "1", "helpFolder": "m", "helpLocation": "", "refItems": []},
        {"productName": "two", "baseCode": "2", "helpFolder": "m", "helpLocation": "",
         "refItems": [{"name": "c", "refpurpose": "p", "href": "h"}]}]})");

inline std::string contentOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios_base::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline std::vector<std::string> keptInputs(const std::string& target) {
    std::vector<std::string> inputs;
    for (const auto& entry :
         std::filesystem::directory_iterator(std::filesystem::path(DOCPARSER_FUZZ_CORPUS) / target))
        inputs.push_back(contentOf(entry.path()));
    return inputs;
}

/// Compares what the client's check reports with what the library returns.
class RefdocCheckAgreement : public LookupFixture {
protected:
    static std::vector<refdoc::Finding> check() {
        refdoc::RootCheck check;
        while (check.stepsDone() < check.stepCount())
            check.step();
        return check.finish().findings;
    }

    static bool loses(const std::vector<refdoc::Finding>& findings, refdoc::Loss loss,
                      const std::string& entry = {}) {
        return std::any_of(findings.begin(), findings.end(), [&](const refdoc::Finding& finding) {
            return finding.loss == loss && finding.entry == entry;
        });
    }

    /// The keys and product names of the documents that the library returns in the current
    /// language.
    using Delivered = std::set<std::pair<std::string, std::string>>;

    template <typename Documents>
    static void addDelivered(const Documents& documents, Delivered& delivered) {
        for (const auto& [key, document] : documents)
            delivered.emplace(fl::i18n::to_string(key),
                              fl::i18n::to_string(document.header.getProductName()));
    }

    static Delivered deliveredLookups() {
        Delivered delivered;
        const reference::docparser::LookupResources resources =
            reference::docparser::DocResourceParser::getResourceLookupFiles();
        addDelivered(resources.first, delivered);
        addDelivered(resources.second, delivered);
        return delivered;
    }

    static Delivered deliveredReferences() {
        Delivered delivered;
        addDelivered(reference::docparser::DocResourceParser::getResourceFile(u"m"), delivered);
        return delivered;
    }

    struct Document {
        std::string key;
        boost::json::value content;
    };

    /// The documents of a text that are not reported as lost.
    static std::vector<Document> documentsLeft(const std::string& text,
                                               const std::vector<refdoc::Finding>& findings) {
        std::vector<Document> documents;
        if (loses(findings, refdoc::Loss::File))
            return documents;
        std::set<std::string> lost;
        for (const refdoc::Finding& finding : findings)
            if (finding.loss == refdoc::Loss::Document)
                lost.insert(finding.pointer);
        const auto add = [&](const boost::json::value& document, const char* key,
                             const std::string& pointer) {
            if (!lost.contains(pointer))
                documents.push_back({asRead(document.at(key)), document});
        };
        const boost::json::value resource = boost::json::parse(text);
        add(resource, "helpFolder", "");
        if (const boost::json::value* packages =
                resource.as_object().if_contains("supportPackages"))
            for (std::size_t i = 0; i < packages->as_array().size(); ++i)
                add(packages->at(i), "baseCode", numbered("/supportPackages/", i));
        return documents;
    }

    static Delivered expected(const std::string& text,
                              const std::vector<refdoc::Finding>& findings) {
        Delivered expected;
        for (const Document& document : documentsLeft(text, findings))
            expected.emplace(document.key,
                             std::string(document.content.at("productName").as_string()));
        return expected;
    }

    /// The key as the library reads it: byte by byte.
    static std::string asRead(const boost::json::value& key) {
        std::u16string text;
        for (const char byte : key.as_string())
            text += static_cast<char16_t>(static_cast<unsigned char>(byte));
        return fl::i18n::to_string(text);
    }

    /// Key, href and purpose of each item of a text that is not reported as lost.
    static std::vector<std::tuple<std::string, std::string, std::string>>
    itemsLeft(const std::string& text, const std::vector<refdoc::Finding>& findings,
              const std::string& file) {
        std::vector<refdoc::Finding> own;
        std::copy_if(findings.begin(), findings.end(), std::back_inserter(own),
                     [&file](const refdoc::Finding& each) { return each.file.ends_with(file); });
        std::vector<std::tuple<std::string, std::string, std::string>> items;
        for (const Document& document : documentsLeft(text, own))
            for (const boost::json::value& item : document.content.at("refItems").as_array())
                items.emplace_back(document.key, asRead(item.at("href")),
                                   std::string(item.at("refpurpose").as_string()));
        return items;
    }

    /// The walk and a schema validator must agree on kinds and enumerations.
    void expectJudgement(refdoc::Catalog catalog, const std::string& text) {
        boost::json::error_code failure;
        const boost::json::value document = boost::json::parse(text, failure);
        if (failure)
            return;
        const bool isLookup = catalog == refdoc::Catalog::Lookup;
        refdoc::FormatWalk walk(document,
                                isLookup ? refdoc::lookupFormat() : refdoc::referenceFormat());
        bool isSound = true;
        while (const auto deviation = walk.next())
            isSound = isSound && !deviation->losesText() &&
                      deviation->kind != refdoc::Deviation::Kind::UnknownText;
        EXPECT_EQ((isLookup ? lookupJudge_ : referenceJudge_).accepts(document), isSound) << text;
    }

    void expectAgreement(refdoc::Catalog catalog, const std::string& text) {
        expectJudgement(catalog, text);
        root.remove("docCatalog");
        catalog == refdoc::Catalog::Lookup ? root.lookupFile("m.json", text)
                                           : root.referenceFile("m.json", text);
        const std::vector<refdoc::Finding> findings = check();
        const Delivered delivered =
            catalog == refdoc::Catalog::Lookup ? deliveredLookups() : deliveredReferences();
        EXPECT_EQ(loses(findings, refdoc::Loss::File), delivered.empty()) << text;
        EXPECT_EQ(expected(text, findings), delivered) << text;
    }

private:
    SchemaJudge lookupJudge_{refdoc::kLookupSchema};
    SchemaJudge referenceJudge_{refdoc::kReferenceSchema};
};

} // namespace testsupport
