#pragma once

#include <filesystem>

namespace bench {

/// Throws `std::runtime_error`, naming the reader and the file, unless all readers give the same
/// records as the library: all lookup files, plain and packed, and all English reference files.
void requireAgreement(const std::filesystem::path& corpora);

} // namespace bench
