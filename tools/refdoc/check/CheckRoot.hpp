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

/// How a check speaks to its host.
struct CheckHost {
    /// Told how much of all is done whenever more is.
    std::function<void(std::size_t done, std::size_t all)> showProgress;
    /// Puts the documentation language of the code in force. The last one stays.
    std::function<void(const std::string& language)> setLanguage;
};

/// Checks all resource files of the root in force, of all languages at once: reads each file as the
/// library does for itself, has the library read all lookup files in each language that they are
/// in, and looks at each file again beside what came of it and beside the others.
CheckResult checkRoot(const CheckHost& host);

} // namespace refdoc
