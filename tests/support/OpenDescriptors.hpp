#pragma once

#include <cstddef>
#include <filesystem>
#include <iterator>

namespace testsupport {

/// How many files the process has open, including the one by which it counts.
inline std::ptrdiff_t openDescriptors() {
    const std::filesystem::directory_iterator descriptors("/proc/self/fd");
    return std::distance(begin(descriptors), end(descriptors));
}

} // namespace testsupport
