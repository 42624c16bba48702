#include "refdoc/check/CheckRoot.hpp"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <optional>
#include <utility>

#include "refdoc/check/CheckAcross.hpp"
#include "refdoc/check/CheckDelivery.hpp"
#include "refdoc/check/CheckFiles.hpp"
#include "refdoc/check/CheckIndex.hpp"
#include "refdoc/check/CheckJson.hpp"
#include "refdoc/check/CheckNames.hpp"
#include "refdoc/check/CheckText.hpp"
#include "refdoc/check/LookupFates.hpp"

namespace refdoc {

namespace {

class RootCheck {
public:
    explicit RootCheck(const ShowProgress& show) : show_(show) {}

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
        mergeLookups();
        for (const CatalogFile& file : files_)
            checkBesideOthers(file);
        return {files_.size(), findings_.take()};
    }

private:
    void showProgress(std::size_t done) const { show_(done, 2 * files_.size()); }

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

    void mergeLookups() {
        index_.finish();
        fates_.emplace(index_.lookups());
    }

    void checkBesideOthers(const CatalogFile& file) {
        const FindingSink toldAlready = [](const std::vector<Finding>&) {};
        const TextVisitor visit = [this](const ResourceText& text, FindingList& known) {
            FindingList findings(text.file.name, text.leaf);
            const std::optional<std::uint32_t> number = index_.soundNumber(text);
            const auto resource = number ? parseText(text, known) : std::nullopt;
            if (!resource)
                return;
            if (text.file.catalog == Catalog::Lookup)
                checkDelivery(text, *number, resource->value, index_, *fates_, findings);
            checkAcross(text, resource->value, index_, findings);
            locateFindings(text, resource->value, false, findings);
            findings_.add(findings.take());
        };
        readTexts(file, visit, toldAlready);
        showProgress(++done_);
    }

    const ShowProgress& show_;
    std::size_t done_ = 0;
    std::vector<CatalogFile> files_;
    CheckIndex index_;
    std::optional<LookupFates> fates_;
    RootFindings findings_;
};

} // namespace

bool CheckResult::hasErrors() const {
    return std::any_of(findings.begin(), findings.end(),
                       [](const Finding& finding) { return finding.level == Level::Error; });
}

CheckResult checkRoot(const ShowProgress& showProgress) {
    return RootCheck(showProgress).run();
}

} // namespace refdoc
