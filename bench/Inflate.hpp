#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// The contents of all entries of a zip package, and nothing else: what unpacking alone takes.
namespace bench {

std::vector<std::string> inflateWithLibzip(const std::filesystem::path& package);

/// libzip finds the entries, libdeflate unpacks them whole and computes their checksums.
std::vector<std::string> inflateWithLibdeflate(const std::filesystem::path& package);

} // namespace bench
