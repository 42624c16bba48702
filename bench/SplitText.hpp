#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Members.hpp"

namespace bench {

/// A resource file's texts, found beforehand: a reader only has to build the records.
struct SplitText {
    /// A text, or the children of an object or a list, which are adjacent.
    struct Node {
        std::uint32_t begin;   ///< of the text, or the first child's number
        std::uint32_t size;    ///< of the text, or how many children there are
        std::uint64_t members; ///< a bit per member of an object; its children are in their order
    };

    std::vector<Node> nodes; ///< the last one is the root
    std::string text;
};

/// `json` must be a sound resource file.
SplitText split(const std::string& json);

void save(const SplitText& text, const std::filesystem::path& file);
SplitText loadSplitText(const std::filesystem::path& file);

/// Gives the values of a split text to `RecordReader`.
struct SplitJson {
    struct Value {
        const SplitText* source;
        const SplitText::Node* node;
    };
    using Object = Value;
    static constexpr bool kExpectsOrder = true;

    static Value root(const SplitText& source) { return {&source, &source.nodes.back()}; }

    static Object toObject(const Value& value) { return value; }

    static std::optional<Value> find(const Object& object, Member member) {
        const std::uint64_t bit = std::uint64_t{1} << static_cast<unsigned>(member);
        if ((object.node->members & bit) == 0)
            return std::nullopt;
        const auto before =
            static_cast<std::size_t>(std::popcount(object.node->members & (bit - 1)));
        return child(object, before);
    }

    static std::string_view text(const Value& value) {
        return {value.source->text.data() + value.node->begin, value.node->size};
    }

    static std::size_t size(const Value& list) { return list.node->size; }

    template <typename Use>
    static void forEach(const Value& list, Use use) {
        for (std::size_t number = 0; number < list.node->size; ++number)
            use(child(list, number));
    }

private:
    static Value child(const Value& parent, std::size_t number) {
        return {parent.source, parent.source->nodes.data() + parent.node->begin + number};
    }
};

} // namespace bench
