#include "refdoc/KeyedHash.hpp"

#include <array>
#include <bit>
#include <random>

namespace refdoc {

namespace {

/// The algorithm of Aumasson and Bernstein, "SipHash: a fast short-input PRF".
class SipState {
public:
    explicit SipState(const HashKey& key)
        : state_{key.low ^ 0x736f6d6570736575, key.high ^ 0x646f72616e646f6d,
                 key.low ^ 0x6c7967656e657261, key.high ^ 0x7465646279746573} {}

    void add(std::uint64_t word) {
        state_[3] ^= word;
        mix(2);
        state_[0] ^= word;
    }

    std::uint64_t finish() {
        state_[2] ^= 0xff;
        mix(4);
        return state_[0] ^ state_[1] ^ state_[2] ^ state_[3];
    }

private:
    void mix(int rounds) {
        auto& [a, b, c, d] = state_;
        while (rounds-- > 0) {
            a += b;
            b = std::rotl(b, 13) ^ a;
            a = std::rotl(a, 32);
            c += d;
            d = std::rotl(d, 16) ^ c;
            a += d;
            d = std::rotl(d, 21) ^ a;
            c += b;
            b = std::rotl(b, 17) ^ c;
            c = std::rotl(c, 32);
        }
    }

    std::array<std::uint64_t, 4> state_;
};

constexpr std::size_t kWordSize = 8;

/// The first bytes, at most eight, the lowest first.
std::uint64_t wordOf(std::string_view bytes) {
    std::uint64_t word = 0;
    for (std::size_t i = 0; i < bytes.size() && i < kWordSize; ++i)
        word |= std::uint64_t{static_cast<unsigned char>(bytes[i])} << (8 * i);
    return word;
}

HashKey randomKey() {
    std::random_device device;
    const auto word = [&device] { return std::uint64_t{device()} << 32 | device(); };
    const std::uint64_t low = word();
    return {low, word()};
}

} // namespace

std::uint64_t sipHash(const HashKey& key, std::string_view bytes) {
    SipState state(key);
    const std::uint64_t size = bytes.size();
    for (; bytes.size() >= kWordSize; bytes.remove_prefix(kWordSize))
        state.add(wordOf(bytes.substr(0, kWordSize)));
    state.add(wordOf(bytes) | size << 56);
    return state.finish();
}

std::size_t KeyedHash::operator()(std::string_view text) const {
    static const HashKey key = randomKey();
    return static_cast<std::size_t>(sipHash(key, text));
}

} // namespace refdoc
