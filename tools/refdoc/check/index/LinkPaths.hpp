#pragma once

#include <string>
#include <string_view>

namespace refdoc {

/// The page that a link leads to: the link without "#", "?" and what follows, decoded and
/// normalised. Empty for links that leave the documentation or stay on their page.
std::string pageOf(std::string_view link);

/// The path with "." and ".." resolved as far as possible. A path longer than the system allows is
/// returned unchanged.
std::string normalisedPath(std::string path);

/// Whether a file can have this path, given its length and its number of folders (at most 100).
bool mayBePath(std::string_view path);

} // namespace refdoc
