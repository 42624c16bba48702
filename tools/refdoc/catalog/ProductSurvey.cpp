#include "refdoc/catalog/ProductSurvey.hpp"

#include <algorithm>
#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <utility>

#include "refdoc/catalog/LookupFolder.hpp"
#include "refdoc/catalog/LookupIndex.hpp"
#include "refdoc/check/CheckFiles.hpp"
#include "refdoc/check/CheckJson.hpp"
#include "refdoc/check/CheckNames.hpp"
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

void readFile(const LookupFile& file, LookupIndex& index) {
    const TextVisitor add = [&index](const ResourceText& text, FindingList& findings) {
        try {
            if (const std::optional<JsonTree> tree = parseText(text, findings))
                index.add(text.language, text.readers, tree->value);
        } catch (const DocParserException&) {
            return; // the library leaves such a text out as well
        }
    };
    readTexts({Catalog::Lookup, file.path, toUtf8(file.fileName()), toUtf8(file.stem),
               toUtf8(file.resource), toUtf8(file.language), file.isPackage},
              add, [](const std::vector<Finding>&) {});
}

/// Reads each file once, in the library's order.
LookupIndex readFiles(const std::vector<LookupFile>& files) {
    LookupIndex index;
    for (const bool packages : {true, false})
        for (const LookupFile& file : files)
            if (file.isPackage == packages)
                readFile(file, index);
    index.finish();
    return index;
}

bool isSameRecord(const IndexedLookup* left, const IndexedLookup* right) {
    return left->purpose == right->purpose && left->href == right->href;
}

/// What there is to say of a document's records.
struct RecordFacts {
    std::size_t count = 0;              ///< in the current language
    std::set<std::string> translated{}; ///< the languages in which one differs from English
};

/// By the number of the document's key.
std::vector<RecordFacts> collectFacts(const LookupIndex& index, const std::string& current) {
    std::vector<RecordFacts> facts(index.documents().size());
    NumberSet scratch = index.emptySet();
    index.forEachName([&](LookupIndex::Group group) {
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
    });
    return facts;
}

class Survey {
public:
    Survey(const std::vector<LookupFile>& files, const LookupIndex& index)
        : files_(files), index_(index), current_(toUtf8(parsing::getCurrentLocale())) {
        for (const std::u16string& language : possibleLanguages(files))
            languages_.push_back(toUtf8(language));
        if (std::find(languages_.begin(), languages_.end(), current_) == languages_.end())
            current_ = kEnglish;
        for (const LookupFile& file : files)
            fileNames_[file.resource].push_back(file.fileName());
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
        for (const LookupFile& file : files_)
            if (!helpFolders_.contains(file.resource))
                survey.otherFiles.push_back(file.fileName());
        return survey;
    }

    const std::vector<LookupFile>& files_;
    const LookupIndex& index_;
    std::string current_; ///< the language whose names and counts are shown
    std::vector<std::string> languages_{std::string(kEnglish)};
    std::map<std::u16string, std::vector<std::u16string>> fileNames_; ///< by resource
    std::set<std::u16string> helpFolders_;
    ProductTable table_;
};

} // namespace

ProductSurvey surveyProducts() {
    const std::vector<LookupFile> files = findLookupFiles();
    return Survey(files, readFiles(files)).run();
}

} // namespace refdoc
