#pragma once

#include <filesystem>

#include "RecordReader.hpp"

namespace bench {

/// The records of all JSON files of a folder, read by a straightforward program without the
/// library: it lists the folder, reads each file into one buffer with as few system calls as
/// possible, and parses it with Boost.JSON into an arena. It does not merge files of several
/// languages.
Lookups readLookupFolder(const std::filesystem::path& folder);

} // namespace bench
