#include "environment/HostArrays.hpp"

kvArray_tag::~kvArray_tag() = default;

void intrusive_ptr_add_ref(const kvArray_tag* array) noexcept {
    array->references.fetch_add(1, std::memory_order_relaxed);
}

void intrusive_ptr_release(const kvArray_tag* array) noexcept {
    // The other handles' uses of the array must be over before it is deleted.
    if (array->references.fetch_sub(1, std::memory_order_acq_rel) == 1)
        delete array;
}
