#include "refdoc/catalog/ProductSurvey.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <utility>

#include "refdoc/catalog/CatalogFolder.hpp"
#include "refdoc/catalog/LookupIndex.hpp"
#include "refdoc/catalog/TextReader.hpp"
#include "refdoc/format/BoundedTree.hpp"
#include "refdoc/text/Text.hpp"
#include "reference/docparser/DocParserException.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "reference/docparser/ParsingTools.hpp"

namespace refdoc {

namespace {

using namespace reference::docparser;
using reference::property::HeaderInfo;
namespace parsing = DocResourceParser::ParsingTools;

using ProductTable = std::map<std::u16string, SurveyedProduct>;

SurveyedProduct& productOf(ProductTable& table, const std::u16string& key) {
    return table.try_emplace(key, SurveyedProduct{.key = key}).first->second;
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

void addTexts(const CatalogFile& file, LookupIndex& index) {
    TextReader reader(file);
    while (const std::optional<CatalogText> text = reader.next()) {
        if (text->state != CatalogText::State::Read)
            continue;
        try {
            if (const auto parsed = parseBounded(text->content, lookupFormat().names()).tree)
                index.add(text->language, text->readers, parsed->value);
        } catch (const DocParserException&) {
            continue; // the library leaves such a text out as well
        }
    }
}

/// Reads each file once, in the library's order.
LookupIndex readFiles(const std::vector<CatalogFile>& files) {
    LookupIndex index;
    for (const bool packages : {true, false})
        for (const CatalogFile& file : files)
            if (file.isPackage == packages)
                addTexts(file, index);
    index.finish();
    return index;
}

bool isSameRecord(const IndexedLookup* left, const IndexedLookup* right) {
    return left->purpose == right->purpose && left->href == right->href;
}

/// Facts about the records of a document.
struct RecordFacts {
    std::size_t count = 0;              ///< in the current language
    std::set<std::string> translated{}; ///< the languages in which one differs from English
};

/// Indexed by the numbers of the documents' keys.
std::vector<RecordFacts> collectFacts(const LookupIndex& index, const std::string& current) {
    std::vector<RecordFacts> facts(index.documents().size());
    NumberSet scratch = index.emptySet();
    for (const LookupIndex::Group group : index.groups()) {
        RecordFacts& own = facts[group.front().key];
        const auto english = index.lookupsFor(group, kEnglish, scratch);
        std::size_t count = english.size();
        for (const std::string& language : index.ownReaders(group)) {
            const auto lookups = index.lookupsFor(group, language, scratch);
            if (!std::equal(lookups.begin(), lookups.end(), english.begin(), english.end(),
                            isSameRecord))
                own.translated.insert(language);
            if (language == current)
                count = lookups.size();
        }
        own.count += count;
    }
    return facts;
}

/// English, then the other languages that have texts, in the order of the supported languages.
std::vector<std::string> languagesOf(const LookupIndex& index) {
    std::set<std::string> readers;
    for (std::uint32_t text = 0; text < index.textCount(); ++text)
        readers.insert(index.readersOf(text));
    std::vector<std::string> languages{std::string(kEnglish)};
    for (const std::u16string& suffix : parsing::getSupportedDocLocales())
        if (std::string language = toUtf8(suffix.substr(1)); readers.contains(language))
            languages.push_back(std::move(language));
    return languages;
}

class Survey {
public:
    Survey(const std::vector<CatalogFile>& files, const LookupIndex& index)
        : files_(files), index_(index), current_(toUtf8(parsing::getCurrentLocale())),
          languages_(languagesOf(index)) {
        if (std::find(languages_.begin(), languages_.end(), current_) == languages_.end())
            current_ = kEnglish;
        for (const CatalogFile& file : files)
            fileNames_[fromUtf8(file.resource)].push_back(fromUtf8(file.fileName()));
    }

    ProductSurvey run() {
        addInstalled(table_);
        const std::vector<RecordFacts> facts = collectFacts(index_, current_);
        for (const auto& [key, document] : index_.documents())
            addDocument(document, facts[document.key], productOf(table_, key));
        return finish();
    }

private:
    void addDocument(const LookupIndex::Document& document, const RecordFacts& facts,
                     SurveyedProduct& product) {
        const HeaderInfo* english = index_.headerFor(document, kEnglish);
        const HeaderInfo* last = nullptr;
        for (const std::string& language : languages_) {
            const HeaderInfo* header = index_.headerFor(document, language);
            if (header == nullptr)
                continue;
            last = header;
            helpFolders_.insert(header->getHelpFolder());
            if (language == kEnglish || english == nullptr || facts.translated.contains(language) ||
                header->getProductName() != english->getProductName())
                product.languages.push_back(fromUtf8(language));
            if (product.name.empty() || language == current_)
                product.name = header->getProductName();
            if (language == current_)
                product.records = facts.count;
        }
        if (last != nullptr)
            addFolder(last->getHelpFolder(), product);
    }

    void addFolder(const std::u16string& helpFolder, SurveyedProduct& product) const {
        product.isSupportPackage = product.key != helpFolder;
        const auto named = fileNames_.find(helpFolder);
        if (named != fileNames_.end())
            product.files = named->second;
    }

    ProductSurvey finish() {
        ProductSurvey survey;
        for (auto& [key, product] : table_) {
            if (product.name.empty())
                product.name = product.displayName;
            survey.products.push_back(std::move(product));
        }
        for (const CatalogFile& file : files_)
            if (!helpFolders_.contains(fromUtf8(file.resource)))
                survey.otherFiles.push_back(fromUtf8(file.fileName()));
        return survey;
    }

    const std::vector<CatalogFile>& files_;
    const LookupIndex& index_;
    std::string current_; ///< the language whose names and counts are shown
    std::vector<std::string> languages_;
    std::map<std::u16string, std::vector<std::u16string>> fileNames_; ///< by resource
    std::set<std::u16string> helpFolders_;
    ProductTable table_;
};

} // namespace

ProductSurvey surveyProducts() {
    const std::vector<CatalogFile> files = listCatalog(Catalog::Lookup).files;
    return Survey(files, readFiles(files)).run();
}

} // namespace refdoc
