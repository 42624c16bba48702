#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace refdoc {

/// A pattern for whole texts, as in the shell: `*` matches any run of characters, `?` any single
/// one, `[a-c]` one of those listed, `[!a-c]` or `[^a-c]` any other one. A backslash makes the next
/// character literal, and so is a bracket that is never closed. Characters are Unicode code points.
class Glob {
public:
    explicit Glob(std::u16string_view pattern);

    /// Whether the pattern is more than a literal text.
    bool isSpecial() const { return special_; }

    /// Takes time proportional at most to the product of the lengths of text and pattern.
    bool matches(std::u16string_view text) const;

private:
    struct Range {
        char32_t first;
        char32_t last;
    };
    /// The characters that match at one place, or, in a run, at any number of places.
    struct Element {
        bool isRun = false;
        bool negated = false;
        std::vector<Range> ranges{};

        bool accepts(char32_t character) const;
    };

    static std::size_t parseBracket(std::u32string_view pattern, Element& element);
    std::size_t parseElement(std::u32string_view pattern);

    std::vector<Element> elements_;
    bool special_ = false;
};

} // namespace refdoc
