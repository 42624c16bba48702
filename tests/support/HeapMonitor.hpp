#pragma once

#include <cstddef>

/// Watches the program's allocator, through which the library, Boost.Log and libzip allocate too.
/// Only a program that is linked with HeapMonitor.cpp has its allocations watched.
namespace testsupport {

enum class Failing { Once, FromThereOn };

/// While it lives, the allocations of its thread fail after the first `succeeding` ones. Not to be
/// nested.
class AllocationFault {
public:
    AllocationFault(std::size_t succeeding, Failing failing) noexcept;
    AllocationFault(const AllocationFault&) = delete;
    AllocationFault& operator=(const AllocationFault&) = delete;
    ~AllocationFault();

    /// Whether an allocation has failed.
    bool hasStruck() const noexcept;
};

/// Measures the most bytes that all threads had allocated at the same time since its construction,
/// beyond those that they had then. Not to be nested.
class HeapPeak {
public:
    HeapPeak() noexcept;
    HeapPeak(const HeapPeak&) = delete;
    HeapPeak& operator=(const HeapPeak&) = delete;
    ~HeapPeak();

    std::size_t bytes() const noexcept;

    /// The bytes that are allocated now beyond those at first.
    std::size_t heldBytes() const noexcept;
};

} // namespace testsupport
