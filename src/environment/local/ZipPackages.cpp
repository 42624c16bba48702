#include "environment/ZipPackages.hpp"

#include <array>
#include <ostream>
#include <stdexcept>
#include <utility>

#include "environment/local/ZipArchive.hpp"

namespace storage::microservicestoragesystem {

foundation::storage::vfs::StorageSystemReference GetStorageSystemReference() {
    return {};
}

} // namespace storage::microservicestoragesystem

namespace opc {

FileSystemOpsSelector::FileSystemOpsSelector(
    const foundation::storage::vfs::StorageSystemReference& /*storage*/) {}

InputStream::~InputStream() = default;

void StreamHelper::copyStreamToStream(InputStream& input, std::ostream& output) {
    std::array<char, std::size_t{32} * 1024> buffer;
    while (const std::size_t size = input.read(buffer.data(), buffer.size()))
        if (!output.write(buffer.data(), static_cast<std::streamsize>(size)))
            throw std::runtime_error("the output stream takes no more");
}

namespace zippackage {

ZipPhysicalPackage::ZipPhysicalPackage(const std::u16string& path,
                                       FileSystemOpsSelector& /*operations*/, bool /*readOnly*/)
    : archive_(std::make_shared<ZipArchive>(path)) {}

ZipPhysicalPackage::~ZipPhysicalPackage() = default;

} // namespace zippackage

namespace model {

Package::Package(zippackage::ZipPhysicalPackage& physicalPackage)
    : archive_(physicalPackage.getArchive()) {}

void Package::open(interfaces::OpenMode /*mode*/) {
    archive_->open();
}

} // namespace model

namespace zqservices {

FileSystemEntry::FileSystemEntry(std::shared_ptr<const Leaf> leaf) noexcept
    : leaf_(std::move(leaf)) {}

const std::u16string& FileSystemEntry::getBaseName() const noexcept {
    return leaf_->baseName;
}

ContentSource::~ContentSource() = default;

FileSystemManager::FileSystemManager(model::Package& package, FileSystemOpsSelector& /*operations*/)
    : archive_(package.getArchive()) {}

std::vector<FileSystemEntry> FileSystemManager::getAllLeafs() const {
    const auto leaves = archive_->getLeaves();
    std::vector<FileSystemEntry> entries;
    entries.reserve(leaves->size());
    // Each entry keeps the whole list alive: one block of memory for all of them.
    for (const FileSystemEntry::Leaf& leaf : *leaves)
        entries.emplace_back(std::shared_ptr<const FileSystemEntry::Leaf>(leaves, &leaf));
    return entries;
}

std::u16string FileSystemManager::getPath(const FileSystemEntry& entry) const {
    return archive_->pathOf(entry.getLeaf());
}

std::unique_ptr<ContentSource>
FileSystemManager::getFileContentSource(const FileSystemEntry& entry,
                                        TransformMode /*mode*/) const {
    return archive_->openLeaf(entry.getLeaf());
}

} // namespace zqservices

} // namespace opc
