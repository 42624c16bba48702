#pragma once

#include <filesystem>

#include "RecordReader.hpp"

namespace bench {

/// The records of all JSON files of a folder, as a straightforward program without the library gets
/// them: it lists the folder, reads each file into one buffer with as few system calls as can be,
/// and parses it with Boost.JSON into an arena. Files of several languages are not merged.
Lookups readLookupFolder(const std::filesystem::path& folder);

} // namespace bench
