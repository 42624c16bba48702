#pragma once

#include <atomic>
#include <cstdint>

/// @file
/// The host's arrays, and the functions by which `boost::intrusive_ptr` counts handles to them.

#pragma GCC visibility push(default)

/// A value of the host's array type, with a count of the handles that refer to it. A host derives
/// its arrays from this; the last handle to go deletes the array.
struct kvArray_tag {
    /// An array that no handle refers to yet.
    kvArray_tag() = default;
    /// Arrays are shared and cannot be copied.
    kvArray_tag(const kvArray_tag&) = delete;
    /// Arrays are shared and cannot be assigned.
    kvArray_tag& operator=(const kvArray_tag&) = delete;
    virtual ~kvArray_tag();

    /// How many handles refer to the array.
    mutable std::atomic<std::uint32_t> references{0};
};

/// Counts a new handle. Any thread may call it.
void intrusive_ptr_add_ref(const kvArray_tag* array) noexcept;
/// Removes a handle, and deletes the array with the last one. Any thread may call it.
void intrusive_ptr_release(const kvArray_tag* array) noexcept;

#pragma GCC visibility pop
