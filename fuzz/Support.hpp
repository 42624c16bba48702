#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

/// The entry point of every target; the bytes belong to the caller.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

/// Ends the process so that the fuzzing engine, and a replay, report the input as a failure.
inline void require(bool holds, std::string_view rule) {
    if (holds)
        return;
    std::fprintf(stderr, "broken: %.*s\n", static_cast<int>(rule.size()), rule.data());
    std::abort();
}

inline std::string_view textOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

/// Gives out an input piece by piece; after its end there are only zeros.
class Choices {
public:
    explicit Choices(std::string_view input) : input_(input) {}

    /// A number below `count`, from one byte of the input.
    std::size_t below(std::size_t count) {
        if (input_.empty())
            return 0;
        const auto byte = static_cast<unsigned char>(input_.front());
        input_.remove_prefix(1);
        return byte % count;
    }

    bool yes() { return below(2) == 1; }

    template <typename Table>
    const auto& from(const Table& table) {
        return table[below(std::size(table))];
    }

    bool isUsedUp() const { return input_.empty(); }
    std::string_view rest() const { return input_; }

private:
    std::string_view input_;
};

} // namespace fuzz
