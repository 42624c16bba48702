#include "refdoc/ProductSurvey.hpp"

#include <algorithm>
#include <map>
#include <memory>
#include <utility>

#include "environment/Services.hpp"
#include "refdoc/HostSetup.hpp"
#include "refdoc/LookupFolder.hpp"
#include "refdoc/Text.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "reference/docparser/ParsingTools.hpp"

namespace refdoc {

namespace {

using namespace reference::docparser;
using reference::property::RefItemLookup;
namespace parsing = DocResourceParser::ParsingTools;

using LookupDocument = DocResource<RefItemLookup>;
using Documents = std::map<std::u16string, LookupDocument>;
using ProductTable = std::map<std::u16string, SurveyedProduct>;

SurveyedProduct& productOf(ProductTable& table, const std::u16string& key) {
    SurveyedProduct blank{key, {}, {}, false, false, 0, {}, {}};
    return table.try_emplace(key, std::move(blank)).first->second;
}

void addInstalled(ProductTable& table) {
    for (const std::u16string& name : *DocResourceParser::getHardwareSupportPackages()) {
        SurveyedProduct& product = productOf(table, name);
        product.isSupportPackage = true;
        product.isInstalled = true;
    }
    const auto installed = DocResourceParser::getTopLevelProducts();
    if (installed == nullptr)
        return;
    for (const auto& entry : *installed) {
        SurveyedProduct& product = productOf(table, fromUtf8(entry->getShortName()));
        product.displayName = fromUtf8(entry->getDisplayName());
        product.isSupportPackage = false;
        product.isInstalled = true;
    }
}

/// All documents, installed or not, as a reader of `language` gets them.
Documents readDocuments(const std::u16string& language, const GlobalOptions& options) {
    environment::Services services = hostServices(options);
    services.docLanguage = [language] { return language; };
    environment::setServices(std::move(services));
    LookupResources documents = DocResourceParser::getResourceLookupFiles();
    environment::setServices(hostServices(options));
    documents.first.merge(documents.second);
    return std::move(documents.first);
}

bool isSameRecord(const RefItemLookup& left, const RefItemLookup& right) {
    return left.getPurpose() == right.getPurpose() && left.getHref() == right.getHref();
}

bool isTranslated(const LookupDocument& localized, const LookupDocument& english) {
    const bool same =
        localized.header.getProductName() == english.header.getProductName() &&
        std::equal(localized.items.begin(), localized.items.end(), english.items.begin(),
                   english.items.end(), [](const auto& left, const auto& right) {
                       return left.first == right.first &&
                              std::equal(left.second.begin(), left.second.end(),
                                         right.second.begin(), right.second.end(), isSameRecord);
                   });
    return !same;
}

std::size_t countItems(const LookupDocument& document) {
    std::size_t count = 0;
    for (const auto& [name, items] : document.items)
        count += items.size();
    return count;
}

/// What all products are made of.
struct SurveyData {
    std::u16string current; ///< the language whose documents are shown and counted
    Documents english;
    std::vector<LookupFile> files;
    ProductTable table;
};

void surveyDocument(const std::u16string& language, const LookupDocument& document,
                    SurveyedProduct& product, SurveyData& data) {
    const auto english = data.english.find(product.key);
    if (language == parsing::kEnglishLocale || english == data.english.end() ||
        isTranslated(document, english->second))
        product.languages.push_back(language);
    const std::u16string& helpFolder = document.header.getHelpFolder();
    if (product.name.empty() || language == data.current)
        product.name = document.header.getProductName();
    product.isSupportPackage = product.key != helpFolder;
    if (language == data.current)
        product.records = countItems(document);
    product.files.clear();
    for (LookupFile& file : data.files) {
        if (file.resource == helpFolder) {
            product.files.push_back(file.fileName());
            file.isOfProduct = true;
        }
    }
}

void surveyLanguage(const std::u16string& language, const Documents& documents, SurveyData& data) {
    for (const auto& [key, document] : documents)
        surveyDocument(language, document, productOf(data.table, key), data);
}

ProductSurvey finished(SurveyData&& data) {
    ProductSurvey survey;
    for (auto& [key, product] : data.table) {
        if (product.name.empty())
            product.name = product.displayName;
        survey.products.push_back(std::move(product));
    }
    for (const LookupFile& file : data.files)
        if (!file.isOfProduct)
            survey.otherFiles.push_back(file.fileName());
    return survey;
}

} // namespace

ProductSurvey surveyProducts(const GlobalOptions& options) {
    SurveyData data{parsing::getCurrentLocale(),
                    readDocuments(parsing::kEnglishLocale, options),
                    findLookupFiles(),
                    {}};
    const std::vector<std::u16string> languages = possibleLanguages(data.files);
    if (std::find(languages.begin(), languages.end(), data.current) == languages.end())
        data.current = parsing::kEnglishLocale;
    addInstalled(data.table);
    surveyLanguage(parsing::kEnglishLocale, data.english, data);
    for (const std::u16string& language : languages)
        surveyLanguage(language, readDocuments(language, options), data);
    return finished(std::move(data));
}

} // namespace refdoc
