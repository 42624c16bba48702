#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "support/ZipFile.hpp"

/// Small packages with much content.
namespace testsupport {

/// A package whose first entry holds `size` blanks, a multiple of 1 MiB, and is declared to hold
/// `declaredSize`. It is composed of one compressed block: neither it nor its content is ever made
/// at full length.
ZipBytes makeZipBomb(const std::string& name, std::uint64_t size, std::uint32_t declaredSize);

/// A package of `count` entries, "0.json" and so on, that are all the same bytes of the file.
ZipBytes overlappingEntries(const std::string& content, std::size_t count);

} // namespace testsupport
