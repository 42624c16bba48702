#pragma once

#include <filesystem>

#include "Loads.hpp"

namespace bench {

/// Registers first loads, each in a process of its own, and reloads in this one.
void registerLoads(const std::filesystem::path& corpora);

/// What the process of a first load does: loads once, and prints what it measured.
void loadOnce(const std::filesystem::path& corpora, const Load& load);

} // namespace bench
