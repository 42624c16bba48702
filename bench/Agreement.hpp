#pragma once

#include <filesystem>

namespace bench {

/// Throws `std::runtime_error`, naming the reader and the file, unless all readers give the same
/// records as the library for every file of the root `plain`.
void requireAgreement(const std::filesystem::path& corpora);

} // namespace bench
