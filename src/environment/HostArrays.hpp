#pragma once

#include <atomic>
#include <cstdint>

#pragma GCC visibility push(default)

/// A value of the host's array type, counted by the handles that refer to it. A host derives its
/// arrays from this; the last handle to go deletes the array.
struct kvArray_tag {
    kvArray_tag() = default;
    kvArray_tag(const kvArray_tag&) = delete;
    kvArray_tag& operator=(const kvArray_tag&) = delete;
    virtual ~kvArray_tag();

    mutable std::atomic<std::uint32_t> references{0};
};

void intrusive_ptr_add_ref(const kvArray_tag* array) noexcept;
void intrusive_ptr_release(const kvArray_tag* array) noexcept;

#pragma GCC visibility pop
