#pragma once

#include <string>
#include <utility>
#include <vector>

#include "environment/ZipPackages.hpp"
#include "reference/docparser/Export.hpp"

namespace reference::docparser {

/// What is known of any product resource file that was found.
struct DOCPARSER_API ProductData {
    /// Describes the file with the stem `name`.
    ProductData(std::u16string name, bool nonEnglishLocale);

    /// `name`, by a reference that is valid as long as the record.
    const std::u16string& getName() const noexcept;

    /// The value of `nonEnglishLocale`.
    bool isNonEnglishLocale() const noexcept;

    /// The file's name without its last extension. A language suffix stays part of it:
    /// `alpha_ja.json` has the name alpha_ja.
    std::u16string name;
    /// Whether the file is the variant in the current documentation language; false for a base
    /// (English) file.
    bool nonEnglishLocale;
};

/// A product resource file on disk: a plain JSON file or a zip package.
struct DOCPARSER_API ProductPathData : ProductData {
    /// Describes the file at `fullPath`.
    ProductPathData(std::u16string name, bool nonEnglishLocale, std::u16string fullPath);

    /// `fullPath`, by a reference that is valid as long as the record.
    const std::u16string& getFullPath() const noexcept;

    /// The path as the walk of its folder gave it.
    std::u16string fullPath;
};

/// A product resource file inside an open zip package. The record owns neither the package nor
/// its manager: it is valid only as long as the package is open and `fileSystemManager` alive.
struct DOCPARSER_API ProductZipData : ProductData {
    /// Describes `entry`, which it copies; the manager stays the caller's.
    ProductZipData(std::u16string name, bool nonEnglishLocale,
                   const opc::zqservices::FileSystemEntry& entry,
                   opc::zqservices::FileSystemManager* fileSystemManager);

    /// `entry`, by a reference that is valid as long as the record.
    const opc::zqservices::FileSystemEntry& getEntry() const noexcept;

    /// The pointer `fileSystemManager`.
    opc::zqservices::FileSystemManager* getFileSystemManager() const noexcept;

    /// The entry, which shares the package's own data.
    opc::zqservices::FileSystemEntry entry;
    /// The manager of the open package that holds the entry; never null.
    opc::zqservices::FileSystemManager* fileSystemManager;
};

/// The product resource files of a folder: the plain JSON files, then the zip packages, each in
/// the order in which the folder was walked.
using ProductFiles = std::pair<std::vector<ProductPathData>, std::vector<ProductPathData>>;

} // namespace reference::docparser
