#pragma once

#include <string>
#include <utility>
#include <vector>

#include "environment/ZipPackages.hpp"
#include "reference/docparser/Export.hpp"

namespace reference::docparser {

/// What every found product resource file has.
struct DOCPARSER_API ProductData {
    /// Takes the parts over.
    ProductData(std::u16string name, bool nonEnglishLocale);

    /// The file's name without its last extension, valid as long as the record; a language suffix
    /// stays part of it, so that of `alpha_ja.json` is alpha_ja.
    const std::u16string& getName() const noexcept;

    /// Whether the file was taken for the current documentation language's variant; false for a
    /// base (English) file.
    bool isNonEnglishLocale() const noexcept;

    /// As `getName`.
    std::u16string name;
    /// As `isNonEnglishLocale`.
    bool nonEnglishLocale;
};

/// A product resource file on disk: a plain JSON file or a zip package.
struct DOCPARSER_API ProductPathData : ProductData {
    /// Takes the parts over.
    ProductPathData(std::u16string name, bool nonEnglishLocale, std::u16string fullPath);

    /// The path as the walk of its folder gave it, valid as long as the record.
    const std::u16string& getFullPath() const noexcept;

    /// As `getFullPath`.
    std::u16string fullPath;
};

/// A product resource file inside an open zip package. The record owns neither the package nor
/// its manager: it is valid only as long as the package is open and `fileSystemManager` alive.
struct DOCPARSER_API ProductZipData : ProductData {
    /// Takes the parts over; the manager stays the caller's.
    ProductZipData(std::u16string name, bool nonEnglishLocale,
                   const opc::zqservices::FileSystemEntry& entry,
                   opc::zqservices::FileSystemManager* fileSystemManager);

    /// The entry, a share of the package's own; valid as long as the record.
    const opc::zqservices::FileSystemEntry& getEntry() const noexcept;

    /// The manager of the open package that holds the entry; never null.
    opc::zqservices::FileSystemManager* getFileSystemManager() const noexcept;

    /// As `getEntry`.
    opc::zqservices::FileSystemEntry entry;
    /// As `getFileSystemManager`.
    opc::zqservices::FileSystemManager* fileSystemManager;
};

/// The product resource files of a folder: the plain JSON files, then the zip packages, each in
/// the order in which the folder was walked.
using ProductFiles = std::pair<std::vector<ProductPathData>, std::vector<ProductPathData>>;

} // namespace reference::docparser
