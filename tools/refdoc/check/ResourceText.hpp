#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "refdoc/check/CheckFinding.hpp"

namespace refdoc {

enum class Catalog { Lookup, Reference };

/// A file whose name is that of a resource file.
struct CatalogFile {
    Catalog catalog;
    std::u16string path;
    std::string name; ///< relative to the root
    std::string stem;
    std::string resource; ///< the stem without language suffix
    std::string language;
    bool isPackage;
};

/// The text of a file, or of a leaf of a package.
struct ResourceText {
    const CatalogFile& file;
    std::string leaf; ///< the whole name of the entry
    std::size_t leafNumber;
    std::string language; ///< that it counts as
    /// The language of those who get it. English texts go to all, but for those in packages of one
    /// language.
    std::string readers;
    std::string content;

    /// The file's name, with the leaf's behind a colon.
    std::string shownName() const { return leaf.empty() ? file.name : file.name + ':' + leaf; }
};

/// Whether it is what macOS keeps beside a file where the file system, or a package, has no other
/// place for it.
inline bool isMacMetadata(std::string_view content) {
    return content.starts_with(std::string_view("\x00\x05\x16\x07", 4));
}

/// Called with each text that the library reads in any language, and with the list for all that is
/// found about it.
using TextVisitor = std::function<void(const ResourceText& text, FindingList& findings)>;

/// Given all that is found about a file, text by text.
using FindingSink = std::function<void(std::vector<Finding> findings)>;

} // namespace refdoc
