#pragma once

#include <filesystem>

namespace bench {

/// Registers the question whether a product is installed, asked of the built-in environment, beside
/// a bare scan of as many names. Its lists of products are made in a folder under `folder`.
void registerInstalled(const std::filesystem::path& folder);

} // namespace bench
