#pragma once

#include <string>

#include "reference/docparser/ProductData.hpp"

namespace reference::docparser {

/// Replaces `content` with what `openAndReadFile` returns. It serves to read many files one after
/// another in the same memory.
void readContent(const ProductPathData& product, std::string& content);

/// The same for an entry of a package, but frees the memory of the one before first.
void readContent(const ProductZipData& product, std::string& content);

} // namespace reference::docparser
