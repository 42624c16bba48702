#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace refdoc {

struct HashKey {
    std::uint64_t low;
    std::uint64_t high;
};

/// SipHash-2-4 of the bytes. Who does not know the key cannot find bytes whose hashes collide.
std::uint64_t sipHash(const HashKey& key, std::string_view bytes);

/// For hash tables keyed by what documents say: the key is another one in each process.
struct KeyedHash {
    using is_transparent = void;

    std::size_t operator()(std::string_view text) const;
};

} // namespace refdoc
