#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "refdoc/check/CheckFinding.hpp"

namespace refdoc {

struct CheckResult {
    std::size_t fileCount = 0;
    /// In the order of files, leaves and positions.
    std::vector<Finding> findings;

    bool hasErrors() const;
};

/// Told how much of all is done whenever more is.
using ShowProgress = std::function<void(std::size_t done, std::size_t all)>;

/// Checks all resource files of the root in force, of all languages at once: reads each file as the
/// library does, merges all lookup files by the library's rules, and looks at each file again
/// beside what came of it and beside the others.
CheckResult checkRoot(const ShowProgress& showProgress);

} // namespace refdoc
