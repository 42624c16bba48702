#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "refdoc/CheckFinding.hpp"

namespace refdoc {

struct CheckResult {
    std::size_t fileCount = 0;
    /// In the order of files, leaves and positions.
    std::vector<Finding> findings;

    bool hasErrors() const;
};

/// Told how many of all files are done whenever one is; each file comes twice.
using CheckProgress = std::function<void(std::size_t done, std::size_t all)>;

/// Checks all resource files of the root in force, of all languages at once: reads each file as the
/// library does, once for itself and once beside the others.
CheckResult checkRoot(const CheckProgress& progress);

} // namespace refdoc
