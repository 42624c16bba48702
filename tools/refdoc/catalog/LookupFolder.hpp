#pragma once

#include <string>
#include <vector>

namespace refdoc {

/// A file in the folder of lookup files.
struct LookupFile {
    std::u16string path;
    std::u16string stem;     ///< its name without extension
    std::u16string resource; ///< the stem without language suffix
    std::u16string language; ///< "en" for a file without the suffix of a supported language
    bool isPackage;

    std::u16string fileName() const;
};

/// The files of all languages, in the order of their paths.
std::vector<LookupFile> findLookupFiles();

/// The languages other than English that there may be documents in: those that the files' names
/// tell, and the names of the leaves of packages.
std::vector<std::u16string> possibleLanguages(const std::vector<LookupFile>& files);

} // namespace refdoc
