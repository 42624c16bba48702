#pragma once

#include <array>
#include <cstddef>
#include <deque>
#include <initializer_list>
#include <string>
#include <string_view>

namespace jsontext {

/// A set of member names, fast enough to be asked about every member of a text.
class MemberNames {
public:
    MemberNames() = default;
    MemberNames(std::initializer_list<std::string_view> names) {
        for (const std::string_view name : names)
            add(name);
    }
    MemberNames(const MemberNames&) = delete;
    MemberNames& operator=(const MemberNames&) = delete;

    /// Returns the set's own copy of the name, which stays in its place as long as the set lives.
    /// The name is not empty, and no set has more than 64 names.
    const std::string& add(std::string_view name);

    /// Its time depends on the names of the set only, so no text can make it slow.
    bool contains(std::string_view name) const noexcept {
        return !name.empty() && !slots_[slotOf(name)].empty();
    }

private:
    static constexpr std::size_t kSlotCount = 128;

    /// The slot of the name, or the empty slot where it would be.
    std::size_t slotOf(std::string_view name) const noexcept {
        const std::size_t first = static_cast<unsigned char>(name.front());
        const std::size_t last = static_cast<unsigned char>(name.back());
        // Hardly any two of the names in use share a slot.
        std::size_t slot = name.size() * 5 + first * 3 + last * 7;
        while (!slots_[slot %= kSlotCount].empty() && slots_[slot] != name)
            ++slot;
        return slot;
    }

    std::deque<std::string> names_;
    std::array<std::string_view, kSlotCount> slots_; // of `names_`
};

} // namespace jsontext
