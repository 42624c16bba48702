#include "reference/docparser/ProductData.hpp"

#include <utility>

namespace reference::docparser {

ProductData::ProductData(std::u16string stem, bool isLocalized)
    : name(std::move(stem)), nonEnglishLocale(isLocalized) {}

const std::u16string& ProductData::getName() const noexcept {
    return name;
}

bool ProductData::isNonEnglishLocale() const noexcept {
    return nonEnglishLocale;
}

ProductPathData::ProductPathData(std::u16string stem, bool isLocalized, std::u16string path)
    : ProductData(std::move(stem), isLocalized), fullPath(std::move(path)) {}

const std::u16string& ProductPathData::getFullPath() const noexcept {
    return fullPath;
}

ProductZipData::ProductZipData(std::u16string stem, bool isLocalized,
                               const opc::zqservices::FileSystemEntry& leaf,
                               opc::zqservices::FileSystemManager* manager)
    : ProductData(std::move(stem), isLocalized), entry(leaf), fileSystemManager(manager) {}

const opc::zqservices::FileSystemEntry& ProductZipData::getEntry() const noexcept {
    return entry;
}

opc::zqservices::FileSystemManager* ProductZipData::getFileSystemManager() const noexcept {
    return fileSystemManager;
}

} // namespace reference::docparser
