#pragma once

#include <string>
#include <string_view>

namespace refdoc {

/// The page that a link leads to: the link without what follows "#" or "?", its escapes decoded,
/// normalised. Empty for links that leave the documentation or stay on their page.
std::string pageOf(std::string_view link);

/// A path without "." and ".." as far as they can be resolved; one that is longer than a file's can
/// be stays as it is.
std::string normalisedPath(std::string path);

/// Whether a path can be that of a file, as far as its length and its folders, 100 at most, say.
bool mayBePath(std::string_view path);

} // namespace refdoc
