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

/// Checks all resource files of the current root, for all languages at once. Each file is read
/// twice: first alone, as the library reads it, then beside the others and beside what merging all
/// lookup files by the library's rules gives. A file that changes in between is checked as far as
/// it is still readable.
class RootCheck {
public:
    /// Lists the files.
    RootCheck();

    std::size_t stepCount() const { return 2 * files_.size(); }
    std::size_t stepsDone() const { return done_; }

    /// Checks the next file. Must be called until all steps are done.
    void step();

    /// Gives the result; can be called once.
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
    std::optional<LookupFates> fates_; ///< set once all files have been read
    RootFindings findings_;
};

} // namespace refdoc
