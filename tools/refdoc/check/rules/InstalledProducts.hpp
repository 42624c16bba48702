#pragma once

#include <vector>

#include "refdoc/check/findings/Finding.hpp"

namespace refdoc {

/// Reports what is wrong with the list of installed products. While it cannot be had, the library
/// gives no lookups at all, whatever the resource files are like.
std::vector<Finding> checkInstalledProducts();

} // namespace refdoc
