#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace refdoc {

inline constexpr std::string_view kEnglish = "en";

/// The two folders of a documentation root that hold resource files.
enum class Catalog { Lookup, Reference };

/// A file that the library reads as a resource file, in one language or another.
struct CatalogFile {
    Catalog catalog;
    std::u16string path;
    std::string name;     ///< relative to the root
    std::string stem;     ///< the file's name without extension
    std::string resource; ///< the stem without language suffix
    std::string language; ///< "en" for a stem without the suffix of a supported language
    bool isPackage;

    std::string fileName() const { return name.substr(name.rfind('/') + 1); }
};

/// Anything else in a catalog folder.
struct OtherEntry {
    enum class Kind {
        BrokenLink, ///< named like a resource file, as is the next kind
        Unreachable,
        Folder,
        FolderOfResources, ///< contains files with names of resource files
        NotAFile,
        NotUtf8, ///< named like a resource file but for bytes that are not UTF-8
        PackagedReference,
        LetterCase, ///< named like a resource file but for the case of its extension
        OtherFile
    };

    Kind kind;
    std::string name;              ///< relative to the root, byte for byte
    std::size_t resourceCount = 0; ///< of a folder of resources
    std::string cause{};           ///< why it cannot be reached
};

/// The contents of a catalog folder, listed once for all languages.
struct CatalogFolder {
    std::string name;               ///< relative to the root
    std::vector<CatalogFile> files; ///< in the library's order, by UTF-16 name
    std::vector<OtherEntry> others;
    std::error_code failure; ///< why the list is incomplete or empty
};

/// Lists a catalog folder of the current root by the library's rules for names. A missing folder
/// counts as empty.
CatalogFolder listCatalog(Catalog catalog);

/// What the stem of a resource file's name says about the file.
struct StemParts {
    std::string resource;
    std::string language;
};

/// The language is English unless the stem ends with one of `suffixes`, those of the other
/// supported languages.
StemParts partsOfStem(const std::string& stem, const std::vector<std::u16string>& suffixes);

/// Whether the library reads a file of this name.
bool isResourceFileName(const std::u16string& name);

/// Whether the name would be that of a resource file but for the case of its letters.
bool isResourceFileNameButForCase(const std::u16string& name);

} // namespace refdoc
