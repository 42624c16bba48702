#pragma once

#include <string>

#include "reference/docparser/ProductData.hpp"

namespace reference::docparser {

/// As `openAndReadFile`, for many files one after another: each takes the memory of the one before.
void readResource(const ProductPathData& product, std::string& content);

/// The same for entries of packages, whose memory is given up before the next one is read.
void readResource(const ProductZipData& product, std::string& content);

} // namespace reference::docparser
