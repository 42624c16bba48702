#include "refdoc/check/CheckRoot.hpp"

#include <algorithm>
#include <iterator>
#include <optional>
#include <set>
#include <utility>

#include "refdoc/check/CheckAcross.hpp"
#include "refdoc/check/CheckDelivery.hpp"
#include "refdoc/check/CheckFiles.hpp"
#include "refdoc/check/CheckIndex.hpp"
#include "refdoc/check/CheckJson.hpp"
#include "refdoc/check/CheckNames.hpp"
#include "refdoc/check/CheckText.hpp"

namespace refdoc {

namespace {

class RootCheck {
public:
    explicit RootCheck(const CheckHost& host) : host_(host) {}

    CheckResult run() {
        for (const Catalog catalog : {Catalog::Lookup, Catalog::Reference}) {
            CatalogFolder folder = listCatalog(catalog);
            findings_.add(std::move(folder.findings));
            std::move(folder.files.begin(), folder.files.end(), std::back_inserter(files_));
        }
        // As the library reads them; it matters to documents of one key.
        std::stable_partition(files_.begin(), files_.end(),
                              [](const CatalogFile& file) { return file.isPackage; });
        for (const CatalogFile& file : files_)
            checkAlone(file);
        readDeliveries();
        for (const CatalogFile& file : files_)
            checkBesideOthers(file);
        return {files_.size(), findings_.take()};
    }

private:
    void showProgress(std::size_t done) const { host_.showProgress(done, 3 * files_.size()); }

    void readTextsOf(const CatalogFile& file, const TextVisitor& visit) {
        readTexts(file, visit,
                  [this](std::vector<Finding> findings) { findings_.add(std::move(findings)); });
    }

    void checkAlone(const CatalogFile& file) {
        index_.addFile(file);
        bool isParsed = false;
        readTextsOf(file, [this, &isParsed](const ResourceText& text, FindingList& findings) {
            const std::optional<JsonTree> resource = parseText(text, findings);
            isParsed = resource.has_value();
            if (!isParsed)
                return;
            checkText(text, resource->value, findings);
            locateFindings(text, resource->value, true, findings);
            if (text.file.catalog == Catalog::Reference)
                index_.addPages(text, resource->value);
            if (!findings.losesText())
                index_.addSoundText(text, resource->value);
        });
        if (file.catalog == Catalog::Reference && file.language == kEnglish && !isParsed)
            index_.addUnreadable(file);
        showProgress(++done_);
    }

    /// All files again for each language; together they count as once.
    void readDeliveries() {
        const std::set<std::string>& languages = index_.lookupReaders();
        std::size_t read = 0;
        for (const std::string& language : languages) {
            host_.setLanguage(language);
            deliveries_.try_emplace(language);
            showProgress(done_ + ++read * files_.size() / languages.size());
        }
        done_ += files_.size();
    }

    void checkBesideOthers(const CatalogFile& file) {
        const FindingSink toldAlready = [](const std::vector<Finding>&) {};
        const TextVisitor visit = [this](const ResourceText& text, FindingList& known) {
            FindingList findings(text.file.name, text.leaf);
            const std::optional<JsonTree> resource =
                index_.isSound(text) ? parseText(text, known) : std::nullopt;
            if (!resource)
                return;
            checkDelivery(text, resource->value, index_, deliveries_, findings);
            checkAcross(text, resource->value, index_, findings);
            locateFindings(text, resource->value, false, findings);
            findings_.add(findings.take());
        };
        readTexts(file, visit, toldAlready);
        showProgress(++done_);
    }

    const CheckHost& host_;
    std::size_t done_ = 0;
    std::vector<CatalogFile> files_;
    CheckIndex index_;
    Deliveries deliveries_;
    RootFindings findings_;
};

} // namespace

bool CheckResult::hasErrors() const {
    return std::any_of(findings.begin(), findings.end(),
                       [](const Finding& finding) { return finding.level == Level::Error; });
}

CheckResult checkRoot(const CheckHost& host) {
    return RootCheck(host).run();
}

} // namespace refdoc
