#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace refdoc {

inline constexpr std::string_view kEnglish = "en";

/// The two folders of resource files that a root has.
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

    /// The last component of the path.
    std::string fileName() const { return name.substr(name.rfind('/') + 1); }
};

/// Something else in a catalog folder.
struct OtherEntry {
    enum class Kind {
        BrokenLink, ///< with the name of a resource file, as the next one
        Unreachable,
        Folder,
        FolderOfResources, ///< with files in it that have names of resource files
        NotAFile,
        NotUtf8, ///< the name of a resource file but for bytes that are not UTF-8
        PackagedReference,
        LetterCase, ///< the name of a resource file but for the case of its extension
        OtherFile
    };

    Kind kind;
    std::string name;              ///< relative to the root, as its bytes are
    std::size_t resourceCount = 0; ///< of a folder of resources
    std::string cause{};           ///< why it is out of reach
};

/// What is in a catalog folder, listed once for all languages.
struct CatalogFolder {
    std::string name;               ///< relative to the root
    std::vector<CatalogFile> files; ///< in the library's order, that of their names in UTF-16
    std::vector<OtherEntry> others;
    std::error_code failure; ///< why it is listed in part or not at all
};

/// Lists one folder of the current root by the library's rules for names. A folder that is missing
/// is empty.
CatalogFolder listCatalog(Catalog catalog);

/// What the stem of a resource file's name says.
struct StemParts {
    std::string resource;
    std::string language;
};

/// English unless the stem ends with one of the suffixes, those of the other supported languages.
StemParts partsOfStem(const std::string& stem, const std::vector<std::u16string>& suffixes);

/// Whether the library reads what has the name.
bool isResourceFileName(const std::u16string& name);

/// Whether only letter case keeps the name from being that of a resource file.
bool isResourceFileNameButForCase(const std::u16string& name);

} // namespace refdoc
