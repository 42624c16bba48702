#include "refdoc/format/BoundedTree.hpp"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <boost/json/basic_parser_impl.hpp>
#include <boost/json/monotonic_resource.hpp>
#include <boost/json/value_stack.hpp>

#include "refdoc/format/BlindHandler.hpp"

namespace refdoc {

namespace {

namespace json = boost::json;

/// Builds the tree as Boost.JSON's own handler does, apart from what is left out.
class TreeHandler : public BlindHandler {
public:
    /// Everything but the stack itself is allocated from `memory`.
    TreeHandler(const Format::Names& knownNames, std::size_t mostValues,
                json::monotonic_resource* memory)
        : knownNames_(knownNames), room_(mostValues) {
        stack_.reset(memory);
    }

    bool on_object_begin(Error&) { return begin(); }
    bool on_array_begin(Error&) { return begin(); }
    bool on_object_end(std::size_t, Error& failure) {
        return end(failure, [this](const Container& object) { stack_.push_object(object.kept); });
    }
    bool on_array_end(std::size_t size, Error& failure) {
        return end(failure, [this, size](const Container&) { stack_.push_array(size); });
    }
    bool on_key_part(Text part, std::size_t, Error&) {
        if (skippedDepth_ == 0)
            name_.append(part.data(), part.size());
        return true;
    }
    bool on_key(Text end, std::size_t, Error&) {
        if (skippedDepth_ == 0)
            takeName(end);
        return true;
    }
    bool on_string_part(Text part, std::size_t, Error&) {
        if (isKept())
            stack_.push_chars(part);
        return true;
    }
    bool on_string(Text end, std::size_t, Error& failure) {
        return take(failure, [this, end] { stack_.push_string(end); });
    }
    bool on_int64(std::int64_t number, Text, Error& failure) {
        return take(failure, [this, number] { stack_.push_int64(number); });
    }
    bool on_uint64(std::uint64_t number, Text, Error& failure) {
        return take(failure, [this, number] { stack_.push_uint64(number); });
    }
    bool on_double(double number, Text, Error& failure) {
        return take(failure, [this, number] { stack_.push_double(number); });
    }
    bool on_bool(bool truth, Error& failure) {
        return take(failure, [this, truth] { stack_.push_bool(truth); });
    }
    bool on_null(Error& failure) {
        return take(failure, [this] { stack_.push_null(); });
    }

    json::value release() { return stack_.release(); }
    bool isFull() const { return isFull_; }
    std::size_t unknownMembers() const { return unknownMembers_; }

private:
    /// What to do with the next value.
    enum class Next { Keep, Replace, Drop };

    struct Container {
        std::size_t kept = 0; ///< members; elements are all kept
        std::size_t unknown = 0;
    };

    bool isKept() const { return skippedDepth_ == 0 && next_ == Next::Keep; }

    void takeName(Text end) {
        name_.append(end.data(), end.size());
        Container& object = open_.back();
        next_ = knownNames_.contains(name_) ? Next::Keep
                : hasRoomForUnknown(object) ? Next::Replace
                                            : Next::Drop;
        if (next_ == Next::Drop) {
            ++unknownMembers_;
        } else {
            ++object.kept;
            stack_.push_key(name_);
        }
        name_.clear();
    }

    bool hasRoomForUnknown(Container& object) {
        return object.unknown++ < BoundedTree::kMostUnknownMembers &&
               keptUnknown_++ < BoundedTree::kMostUnknownMembersOfAll;
    }

    bool begin() {
        if (isKept())
            open_.emplace_back();
        else
            ++skippedDepth_;
        return true;
    }

    template <typename Push>
    bool end(Error& failure, Push pushContainer) {
        if (skippedDepth_ > 1) {
            --skippedDepth_;
            return true;
        }
        if (std::exchange(skippedDepth_, 0) == 1) {
            takeInstead();
            return true;
        }
        const Container container = open_.back();
        open_.pop_back();
        return push(failure, [&] { pushContainer(container); });
    }

    template <typename Push>
    bool take(Error& failure, Push pushValue) {
        if (skippedDepth_ == 0 && next_ == Next::Keep)
            return push(failure, pushValue);
        if (skippedDepth_ == 0)
            takeInstead();
        return true;
    }

    void takeInstead() {
        if (std::exchange(next_, Next::Keep) == Next::Replace)
            stack_.push_null();
    }

    template <typename Push>
    bool push(Error& failure, Push pushOne) {
        if (room_ == 0) {
            isFull_ = true;
            failure = json::error::array_too_large;
            return false;
        }
        --room_;
        pushOne();
        return true;
    }

    const Format::Names& knownNames_;
    std::size_t room_;
    json::value_stack stack_;
    std::vector<Container> open_;
    std::string name_;
    Next next_ = Next::Keep;
    std::size_t skippedDepth_ = 0; ///< of the containers that are open within a skipped value
    std::size_t keptUnknown_ = 0;
    std::size_t unknownMembers_ = 0;
    bool isFull_ = false;
};

} // namespace

std::size_t mostValues(std::size_t textSize) {
    constexpr std::size_t always = std::size_t{4} << 20;
    constexpr std::size_t bytesForOne = 8;
    return always + textSize / bytesForOne;
}

BoundedTree parseBounded(std::string_view text, const Format::Names& knownNames) {
    auto memory = std::make_unique<json::monotonic_resource>();
    json::basic_parser<TreeHandler> parser{json::parse_options(), knownNames,
                                           mostValues(text.size()), memory.get()};
    BoundedTree result;
    const std::size_t parsed = parser.write_some(false, text.data(), text.size(), result.failure);
    if (!result.failure && parsed < text.size())
        result.failure = json::error::extra_data;
    result.hasTooManyValues = parser.handler().isFull();
    result.unknownMembers = parser.handler().unknownMembers();
    if (!result.failure)
        result.tree = {std::move(memory), parser.handler().release()};
    return result;
}

} // namespace refdoc
