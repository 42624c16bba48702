#pragma once

#include <vector>

#include "refdoc/check/findings/Finding.hpp"

namespace refdoc {

/// Reports faults of the list of installed products. While the library cannot read it, it gives no
/// lookups at all, however sound the resource files are.
std::vector<Finding> checkInstalledProducts();

} // namespace refdoc
