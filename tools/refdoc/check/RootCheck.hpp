#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "refdoc/catalog/CatalogFolder.hpp"
#include "refdoc/catalog/TextReader.hpp"
#include "refdoc/check/findings/Finding.hpp"
#include "refdoc/check/findings/Violations.hpp"
#include "refdoc/check/index/LookupFates.hpp"
#include "refdoc/check/index/RootIndex.hpp"

namespace refdoc {

/// Checks all resource files of the current root, of all languages at once, file by file: reads
/// each as the library does, merges all lookup files by the library's rules, and looks at each file
/// again beside what came of it and beside the others. A file that changes meanwhile is looked at
/// as far as it is still readable.
class RootCheck {
public:
    /// Lists the files.
    RootCheck();

    std::size_t stepCount() const { return 2 * files_.size(); }
    std::size_t stepsDone() const { return done_; }

    /// Looks at the next file. To be called until all steps are done.
    void step();

    /// What was found, once.
    CheckResult finish();

private:
    void checkNames(const CatalogFolder& folder);
    void checkAlone(const CatalogFile& file);
    bool checkText(const CatalogFile& file, const CatalogText& text, Violations& violations);
    void checkBesideOthers(const CatalogFile& file);
    void checkTextBesideOthers(const CatalogFile& file, const CatalogText& text);

    std::vector<CatalogFile> files_;
    std::size_t done_ = 0;
    RootIndex index_;
    std::optional<LookupFates> fates_; ///< once all files were read
    RootFindings findings_;
};

} // namespace refdoc
