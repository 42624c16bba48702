#include "refdoc/CheckRoot.hpp"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <tuple>
#include <utility>

#include "refdoc/CheckAcross.hpp"
#include "refdoc/CheckFiles.hpp"
#include "refdoc/CheckIndex.hpp"
#include "refdoc/CheckText.hpp"

namespace refdoc {

namespace {

class RootCheck {
public:
    explicit RootCheck(const CheckProgress& progress) : progress_(progress) {}

    CheckResult run() {
        for (const Catalog catalog : {Catalog::Lookup, Catalog::Reference}) {
            CatalogFolder folder = listCatalog(catalog);
            append(std::move(folder.findings));
            std::move(folder.files.begin(), folder.files.end(), std::back_inserter(files_));
        }
        // As the library reads them; it matters to documents of one key.
        std::stable_partition(files_.begin(), files_.end(),
                              [](const CatalogFile& file) { return file.isPackage; });
        for (const CatalogFile& file : files_)
            checkAlone(file);
        for (const CatalogFile& file : files_)
            checkBesideOthers(file);
        return finish();
    }

private:
    void append(std::vector<Finding> findings) {
        std::move(findings.begin(), findings.end(), std::back_inserter(result_.findings));
    }

    void checkAlone(const CatalogFile& file) {
        index_.addFile(file);
        append(readTexts(file, [this](const ResourceText& text, FindingList& findings) {
            const auto resource = parseText(text, findings);
            if (!resource)
                return;
            checkText(text, *resource, findings);
            locateFindings(text, *resource, true, findings);
            if (text.file.catalog == Catalog::Reference)
                index_.addPages(*resource);
            if (!findings.losesText())
                index_.addSoundText(text, *resource);
        }));
        progress_(++done_, 2 * files_.size());
    }

    void checkBesideOthers(const CatalogFile& file) {
        readTexts(file, [this](const ResourceText& text, FindingList&) {
            FindingList findings(text.file.name, text.leaf);
            const auto resource = index_.isSound(text) ? parseText(text, findings) : std::nullopt;
            if (!resource || findings.losesText())
                return;
            checkAcross(text, *resource, index_, findings);
            locateFindings(text, *resource, false, findings);
            append(findings.take());
        });
        progress_(++done_, 2 * files_.size());
    }

    CheckResult finish() {
        const auto order = [](const Finding& finding) {
            return std::tuple(std::string_view(finding.file), std::string_view(finding.leaf),
                              finding.further > 0, finding.position.line, finding.position.column);
        };
        std::stable_sort(result_.findings.begin(), result_.findings.end(),
                         [order](const Finding& left, const Finding& right) {
                             return order(left) < order(right);
                         });
        result_.fileCount = files_.size();
        return std::move(result_);
    }

    const CheckProgress& progress_;
    std::size_t done_ = 0;
    std::vector<CatalogFile> files_;
    CheckIndex index_;
    CheckResult result_;
};

} // namespace

bool CheckResult::hasErrors() const {
    return std::any_of(findings.begin(), findings.end(),
                       [](const Finding& finding) { return finding.level == Level::Error; });
}

CheckResult checkRoot(const CheckProgress& progress) {
    return RootCheck(progress).run();
}

} // namespace refdoc
