// Opens an input as a zip package and reads its leaves.

#include <algorithm>
#include <array>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

#include <sys/mman.h>
#include <unistd.h>

#include "Support.hpp"
#include "environment/ZipPackages.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "reference/docparser/ProductData.hpp"
#include "support/OpenPackage.hpp"

namespace {

using fuzz::require;
using opc::zqservices::FileSystemEntry;
using opc::zqservices::FileSystemManager;

/// What a small package may inflate to.
constexpr std::size_t kContentOfAnyPackage = std::size_t{64} << 20;
/// How much of it is read again and compared.
constexpr std::size_t kReadPerInput = std::size_t{4} << 20;

/// A file in memory with the content that was last put into it.
class MemoryFile {
public:
    MemoryFile() : descriptor_(::memfd_create("package", MFD_CLOEXEC)) {
        require(descriptor_ >= 0, "a file in memory can be had");
    }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile() { ::close(descriptor_); }

    void put(std::string_view bytes) const {
        const bool isPut = ::ftruncate(descriptor_, 0) == 0 &&
                           ::pwrite(descriptor_, bytes.data(), bytes.size(), 0) ==
                               static_cast<ssize_t>(bytes.size());
        require(isPut, "a file in memory can be written");
    }

    std::u16string path() const {
        const std::string number = std::to_string(descriptor_);
        return u"/proc/self/fd/" + std::u16string(number.begin(), number.end());
    }

private:
    int descriptor_;
};

enum class Outcome { Whole, CutOff, Broken };

struct Reading {
    std::string bytes; ///< up to the end, or to the failure
    Outcome outcome = Outcome::Whole;

    bool operator==(const Reading&) const = default;
};

Reading readLeaf(const FileSystemManager& manager, const FileSystemEntry& leaf,
                 std::size_t allowed) {
    Reading reading;
    std::array<char, 16 * 1024> buffer;
    try {
        const auto source =
            manager.getFileContentSource(leaf, opc::zqservices::TransformMode::Decoded);
        opc::InputStream& stream = source->getInputStream();
        while (const std::size_t count = stream.read(buffer.data(), buffer.size())) {
            require(count <= buffer.size(), "no more is read than fits");
            reading.bytes.append(buffer.data(), count);
            if (reading.bytes.size() >= allowed) {
                reading.outcome = Outcome::CutOff;
                break;
            }
        }
    } catch (const std::runtime_error&) {
        reading.outcome = Outcome::Broken;
    }
    return reading;
}

/// A leaf that was not cut off is read as a resource file: whole, or as an empty one when broken.
void checkResourceReading(FileSystemManager& manager, const FileSystemEntry& leaf,
                          const Reading& reading) {
    namespace docparser = reference::docparser;
    const docparser::ProductZipData product(leaf.getBaseName(), false, leaf, &manager);
    const std::string content = docparser::DocResourceParser::openAndReadFile(product);
    require(content == (reading.outcome == Outcome::Whole ? reading.bytes : std::string()),
            "a leaf reads as a resource file");
}

/// Counts without keeping the content.
std::size_t countContent(const FileSystemManager& manager, const FileSystemEntry& leaf,
                         std::size_t enough) {
    std::array<char, 64 * 1024> buffer;
    std::size_t size = 0;
    try {
        const auto source =
            manager.getFileContentSource(leaf, opc::zqservices::TransformMode::Decoded);
        while (const std::size_t count =
                   size > enough ? 0 : source->getInputStream().read(buffer.data(), buffer.size()))
            size += count;
    } catch (const std::runtime_error&) {
        // What was read before the failure counts.
    }
    return size;
}

void checkContentSize(const FileSystemManager& manager) {
    std::size_t size = 0;
    for (const FileSystemEntry& leaf : manager.getAllLeafs())
        size += countContent(manager, leaf, kContentOfAnyPackage);
    require(size <= kContentOfAnyPackage, "a small package has little content");
}

void checkLeaves(FileSystemManager& manager) {
    std::size_t allowed = kReadPerInput;
    for (const FileSystemEntry& leaf : manager.getAllLeafs()) {
        require(leaf.getBaseName().find(u'/') == std::u16string::npos,
                "a base name is one component");
        if (allowed == 0)
            continue;
        const Reading reading = readLeaf(manager, leaf, allowed);
        require(readLeaf(manager, leaf, allowed) == reading, "a leaf reads the same each time");
        if (reading.outcome != Outcome::CutOff)
            checkResourceReading(manager, leaf, reading);
        allowed -= std::min(allowed, reading.bytes.size());
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const MemoryFile file;
    file.put(fuzz::textOf(data, size));
    testsupport::OpenPackage package(file.path(), false);
    try {
        package.open();
    } catch (const std::runtime_error&) {
        return 0;
    }
    checkLeaves(package.manager());
    checkContentSize(package.manager());
    return 0;
}
