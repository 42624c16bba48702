#include "support/HeapMonitor.hpp"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <limits>
#include <new>

#include <malloc.h>

// The allocator below this one: a sanitizer's, if there is one, else the C library's.
extern "C" {
[[gnu::weak]] void* __interceptor_malloc(std::size_t);
[[gnu::weak]] void* __interceptor_calloc(std::size_t, std::size_t);
[[gnu::weak]] void* __interceptor_realloc(void*, std::size_t);
[[gnu::weak]] void* __interceptor_memalign(std::size_t, std::size_t);
[[gnu::weak]] void __interceptor_free(void*);
void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
void* __libc_memalign(std::size_t, std::size_t);
void __libc_free(void*);
}

namespace testsupport {

namespace {

constexpr std::size_t kNoFault = std::numeric_limits<std::size_t>::max();

// The number of allocations of this thread that still succeed.
thread_local std::size_t remaining = kNoFault;
thread_local Failing failing = Failing::Once;
thread_local bool struck = false;

std::atomic<bool> isMeasuring = false;
std::atomic<std::ptrdiff_t> liveBytes = 0;
std::atomic<std::ptrdiff_t> peakBytes = 0;

bool strikes() noexcept {
    if (remaining == kNoFault || (struck && failing == Failing::Once))
        return false;
    if (remaining > 0) {
        --remaining;
        return false;
    }
    struck = true;
    errno = ENOMEM;
    return true;
}

void* taken(void* block) noexcept {
    if (block == nullptr || !isMeasuring)
        return block;
    const auto size = static_cast<std::ptrdiff_t>(::malloc_usable_size(block));
    const std::ptrdiff_t live = liveBytes += size;
    for (std::ptrdiff_t peak = peakBytes;
         peak < live && !peakBytes.compare_exchange_weak(peak, live);)
        continue;
    return block;
}

void givenBack(void* block) noexcept {
    if (block != nullptr && isMeasuring)
        liveBytes -= static_cast<std::ptrdiff_t>(::malloc_usable_size(block));
}

void* allocate(std::size_t size) noexcept {
    if (strikes())
        return nullptr;
    return taken(__interceptor_malloc != nullptr ? __interceptor_malloc(size)
                                                 : __libc_malloc(size));
}

void* allocateAligned(std::size_t alignment, std::size_t size) noexcept {
    if (strikes())
        return nullptr;
    return taken(__interceptor_memalign != nullptr ? __interceptor_memalign(alignment, size)
                                                   : __libc_memalign(alignment, size));
}

void release(void* block) noexcept {
    givenBack(block);
    if (__interceptor_free != nullptr)
        __interceptor_free(block);
    else
        __libc_free(block);
}

void* orThrow(void* block) {
    return block != nullptr ? block : throw std::bad_alloc();
}

} // namespace

AllocationFault::AllocationFault(std::size_t succeeding, Failing kind) noexcept {
    struck = false;
    failing = kind;
    remaining = succeeding;
}

AllocationFault::~AllocationFault() {
    remaining = kNoFault;
}

bool AllocationFault::hasStruck() const noexcept {
    return struck;
}

HeapPeak::HeapPeak() noexcept {
    liveBytes = 0;
    peakBytes = 0;
    isMeasuring = true;
}

HeapPeak::~HeapPeak() {
    isMeasuring = false;
}

std::size_t HeapPeak::bytes() const noexcept {
    return static_cast<std::size_t>(peakBytes.load());
}

std::size_t HeapPeak::heldBytes() const noexcept {
    return static_cast<std::size_t>(std::max<std::ptrdiff_t>(liveBytes, 0));
}

} // namespace testsupport

using testsupport::allocate;
using testsupport::allocateAligned;
using testsupport::orThrow;
using testsupport::release;
using testsupport::strikes;

#pragma GCC visibility push(default)
extern "C" {

void* malloc(std::size_t size) {
    return allocate(size);
}

void* calloc(std::size_t count, std::size_t size) {
    if (strikes())
        return nullptr;
    return testsupport::taken(__interceptor_calloc != nullptr ? __interceptor_calloc(count, size)
                                                              : __libc_calloc(count, size));
}

void* realloc(void* block, std::size_t size) {
    if (strikes())
        return nullptr;
    testsupport::givenBack(block);
    return testsupport::taken(__interceptor_realloc != nullptr ? __interceptor_realloc(block, size)
                                                               : __libc_realloc(block, size));
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
    return allocateAligned(alignment, size);
}

void* memalign(std::size_t alignment, std::size_t size) {
    return allocateAligned(alignment, size);
}

int posix_memalign(void** block, std::size_t alignment, std::size_t size) {
    *block = allocateAligned(alignment, size);
    return *block != nullptr ? 0 : ENOMEM;
}

void free(void* block) {
    release(block);
}

} // extern "C"

void* operator new(std::size_t size) {
    return orThrow(allocate(size));
}

void* operator new[](std::size_t size) {
    return orThrow(allocate(size));
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return allocate(size);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return allocate(size);
}

void operator delete(void* block) noexcept {
    release(block);
}

void operator delete[](void* block) noexcept {
    release(block);
}

void operator delete(void* block, std::size_t) noexcept {
    release(block);
}

void operator delete[](void* block, std::size_t) noexcept {
    release(block);
}
#pragma GCC visibility pop
