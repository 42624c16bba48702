#pragma once

#include <array>
#include <cstddef>
#include <deque>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace jsontext {

/// A set of member names, made to be asked for every member of a text.
class MemberNames {
public:
    MemberNames() = default;
    MemberNames(std::initializer_list<std::string_view> names) {
        for (const std::string_view name : names)
            add(name);
    }
    MemberNames(const MemberNames&) = delete;
    MemberNames& operator=(const MemberNames&) = delete;

    /// Returns the name as the set keeps it: in one place for as long as the set lives.
    const std::string& add(std::string_view name);

    bool contains(std::string_view name) const noexcept {
        for (const std::string* known : slots_[slotOf(name)])
            if (*known == name)
                return true;
        return false;
    }

private:
    static constexpr std::size_t kSlotCount = 64;

    /// Names of one slot cost a comparison each; that there are few is up to the set, not the text.
    static std::size_t slotOf(std::string_view name) noexcept {
        if (name.empty())
            return 0;
        const auto first = static_cast<unsigned char>(name.front());
        const auto last = static_cast<unsigned char>(name.back());
        return (name.size() * 4 + first + last * 3U) % kSlotCount;
    }

    std::deque<std::string> names_;
    std::array<std::vector<const std::string*>, kSlotCount> slots_;
};

} // namespace jsontext
