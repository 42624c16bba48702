#pragma once

#include <string>

#include "reference/docparser/ProductData.hpp"

namespace reference::docparser {

/// Replaces `content` by what `openAndReadFile` gives. For many files one after another: each takes
/// the memory of the one before.
void readContent(const ProductPathData& product, std::string& content);

/// The same for entries of packages, but the memory of the one before is given up first.
void readContent(const ProductZipData& product, std::string& content);

} // namespace reference::docparser
