#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include <zip.h>

#include "environment/local/ZipEndRecords.hpp"

namespace opc::zippackage {

struct FreeZipSource {
    void operator()(zip_source_t* source) const noexcept { zip_source_free(source); }
};

/// A file as libzip reads it: in blocks, without system calls for seeking, and with one size for as
/// long as it is open.
struct ZipFileSource {
    std::unique_ptr<zip_source_t, FreeZipSource> source;
    std::uint64_t size;
    /// They are hidden from libzip as long as this lives, that is, while it opens the file; later
    /// such bytes are content like any other.
    std::shared_ptr<const ForeignEndRecords> foreignEndRecords;
};

/// Opens the file at a UTF-16 path, never waiting for a pipe. Throws `std::runtime_error` when it
/// cannot be read.
ZipFileSource openZipFile(const std::u16string& path);

} // namespace opc::zippackage
