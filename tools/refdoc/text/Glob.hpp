#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace refdoc {

/// A pattern for whole texts, as in the shell: `*` is any run of characters, `?` any single one,
/// `[a-c]` one of those listed, `[!a-c]` or `[^a-c]` one of all others. A backslash takes the
/// meaning of one of these away; so does a bracket that is never closed. Characters are Unicode's.
class Glob {
public:
    explicit Glob(std::u16string_view pattern);

    /// Whether the pattern is more than a text that stands for itself.
    bool isSpecial() const { return special_; }

    /// Takes at most time in proportion to the product of the lengths of text and pattern.
    bool matches(std::u16string_view text) const;

private:
    struct Range {
        char32_t first;
        char32_t last;
    };
    /// What one character may be, or, as a run, any number of characters.
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
