#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include <zip.h>

namespace opc::zippackage {

struct FreeZipSource {
    void operator()(zip_source_t* source) const noexcept { zip_source_free(source); }
};

/// A file as libzip reads it: in blocks, with no system call to move about, and with one size for
/// as long as it is open.
struct ZipFileSource {
    std::unique_ptr<zip_source_t, FreeZipSource> source;
    std::uint64_t size;
};

/// Opens the file at a UTF-16 path, never waiting for a pipe. Throws `std::runtime_error` when it
/// cannot be read.
ZipFileSource openZipFile(const std::u16string& path);

} // namespace opc::zippackage
