#pragma once

#include <vector>

#include "refdoc/check/CheckFinding.hpp"

namespace refdoc {

/// Tells what is wrong with the list of installed products. While it cannot be had, the library
/// gives no lookups at all, whatever the resource files are like.
std::vector<Finding> checkProducts();

} // namespace refdoc
