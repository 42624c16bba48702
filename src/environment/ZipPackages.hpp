#pragma once

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#pragma GCC visibility push(default)

namespace foundation::storage::vfs {

/// Names the storage system that holds packages.
class StorageSystemReference {};

} // namespace foundation::storage::vfs

namespace storage::microservicestoragesystem {

/// The storage system of the process.
foundation::storage::vfs::StorageSystemReference GetStorageSystemReference();

} // namespace storage::microservicestoragesystem

namespace opc {

/// Selects the file operations that the package classes use: those of one storage system.
class FileSystemOpsSelector {
public:
    /// The file operations of `storage`.
    explicit FileSystemOpsSelector(const foundation::storage::vfs::StorageSystemReference& storage);
};

/// Content that is read piece by piece, by one thread at a time.
class InputStream {
public:
    virtual ~InputStream();

    /// Fills `buffer` with up to `capacity` bytes and returns how many; 0 at the end. Throws
    /// `std::runtime_error` when the content cannot be had or is not what was declared.
    virtual std::size_t read(char* buffer, std::size_t capacity) = 0;
};

/// Operations on whole streams.
class StreamHelper {
public:
    /// Copies all that `input` yields to `output`. Throws what reading throws, and
    /// `std::runtime_error` when `output` does not take it.
    static void copyStreamToStream(InputStream& input, std::ostream& output);
};

namespace zippackage {

class [[gnu::visibility("hidden")]] ZipArchive;

/// The zip file at a UTF-16 path. Constructing it does not touch the file.
class ZipPhysicalPackage {
public:
    /// The zip file at `path`, which is only read.
    ZipPhysicalPackage(const std::u16string& path, FileSystemOpsSelector& operations,
                       bool readOnly);
    ~ZipPhysicalPackage();

    /// The environment's own view of the zip file.
    const std::shared_ptr<ZipArchive>& getArchive() const noexcept { return archive_; }

private:
    std::shared_ptr<ZipArchive> archive_;
};

} // namespace zippackage

namespace interfaces {

/// What a package is opened for.
enum class OpenMode : int { Read = 0 };

} // namespace interfaces

namespace model {

/// A package on a zip file. It shares the zip file with the physical package that it was made from,
/// and with what is made from it.
class Package {
public:
    /// A package on `physicalPackage`, not open yet.
    explicit Package(zippackage::ZipPhysicalPackage& physicalPackage);

    /// Reads the package's directory, the one that the last plausible end record names. It does not
    /// look at the content of the entries, so broken content costs that entry only; a directory
    /// that contradicts itself costs the package. Throws `std::runtime_error` when the file cannot
    /// be read as a zip package.
    void open(interfaces::OpenMode mode);

    /// The environment's own view of the zip file.
    const std::shared_ptr<zippackage::ZipArchive>& getArchive() const noexcept { return archive_; }

private:
    std::shared_ptr<zippackage::ZipArchive> archive_;
};

} // namespace model

namespace zqservices {

/// How an entry's content is handed out.
enum class TransformMode : int { Decoded = 1 };

/// An entry of a package that is not a folder: a small value that shares the package's own data.
class FileSystemEntry {
public:
    /// The environment's own data of an entry.
    struct Leaf;

    /// Shares the data of an entry.
    explicit FileSystemEntry(std::shared_ptr<const Leaf> leaf) noexcept;

    /// The last component of the entry's name.
    const std::u16string& getBaseName() const noexcept;

    /// The environment's own view of the entry.
    const Leaf& getLeaf() const noexcept { return *leaf_; }

private:
    std::shared_ptr<const Leaf> leaf_;
};

/// Yields the content of one entry; it must not outlive the open package.
class ContentSource {
public:
    virtual ~ContentSource();
    /// The content from its beginning on, valid as long as the source.
    virtual InputStream& getInputStream() = 0;
};

/// The entries of a package as a file system. Any number of threads may read through one manager.
class FileSystemManager {
public:
    /// The file system of `package`, whose zip file the manager shares.
    FileSystemManager(model::Package& package, FileSystemOpsSelector& operations);

    /// All entries but the folders, in the order of the central directory; equal names are separate
    /// entries. Throws `std::runtime_error` when the package is not open.
    std::vector<FileSystemEntry> getAllLeafs() const;

    /// The entry's name with the folders in front of it, '/' between them. It costs a conversion.
    std::u16string getPath(const FileSystemEntry& entry) const;

    /// Opens an entry for reading. Content is decompressed and checked against its checksum and
    /// declared size. An entry may hold 64 times what is stored of it, 32 MiB in any case and 1 GiB
    /// at most; all entries that are read from one package, each counted once, may hold 64 times
    /// its size, 64 MiB in any case. Entries that share stored bytes can be read as long as they
    /// take up no more than eight times the size of the package. Throws `std::runtime_error` for an
    /// entry that is encrypted, neither stored nor deflated, or beyond these limits; the stream
    /// throws it for content that is broken.
    std::unique_ptr<ContentSource> getFileContentSource(const FileSystemEntry& entry,
                                                        TransformMode mode) const;

private:
    std::shared_ptr<zippackage::ZipArchive> archive_;
};

} // namespace zqservices

} // namespace opc

#pragma GCC visibility pop
