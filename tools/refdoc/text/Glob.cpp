#include "refdoc/text/Glob.hpp"

#include <algorithm>
#include <string>
#include <utility>

#include <unicode/utf16.h>

namespace refdoc {

namespace {

std::u32string toCharacters(std::u16string_view text) {
    std::u32string characters;
    for (std::size_t at = 0; at < text.size();) {
        UChar32 character;
        U16_NEXT(text.data(), at, text.size(), character);
        characters += static_cast<char32_t>(character);
    }
    return characters;
}

} // namespace

bool Glob::Element::accepts(char32_t character) const {
    const bool listed = std::any_of(ranges.begin(), ranges.end(), [&](const Range& range) {
        return range.first <= character && character <= range.last;
    });
    return listed != negated;
}

Glob::Glob(std::u16string_view pattern) {
    const std::u32string characters = toCharacters(pattern);
    std::u32string_view unread = characters;
    while (!unread.empty())
        unread.remove_prefix(parseElement(unread));
}

/// Reads one element and returns its length.
std::size_t Glob::parseElement(std::u32string_view pattern) {
    Element element;
    std::size_t length = parseBracket(pattern, element);
    bool special = true;
    if (pattern.front() == U'*' || pattern.front() == U'?') {
        element.isRun = pattern.front() == U'*';
        element.negated = true; // of no characters: any one is accepted
        length = 1;
    } else if (length == 0) {
        const bool escape = pattern.front() == U'\\' && pattern.size() > 1 &&
                            std::u32string_view(U"*?[]\\").find(pattern[1]) != pattern.npos;
        length = escape ? 2 : 1;
        element.ranges = {{pattern[length - 1], pattern[length - 1]}};
        special = escape;
    }
    special_ = special_ || special;
    elements_.push_back(std::move(element));
    return length;
}

/// Reads the bracket expression that `pattern` begins with; returns its length, or 0 if there is
/// none.
std::size_t Glob::parseBracket(std::u32string_view pattern, Element& element) {
    if (pattern.front() != U'[')
        return 0;
    const bool negated = pattern.size() > 1 && (pattern[1] == U'!' || pattern[1] == U'^');
    const std::size_t begin = negated ? 2 : 1;
    const std::size_t end = pattern.find(U']', begin + 1); // the first one may be a member
    if (end == pattern.npos)
        return 0;
    element.negated = negated;
    for (std::size_t at = begin; at < end; ++at) {
        const bool isRange = at + 2 < end && pattern[at + 1] == U'-';
        element.ranges.push_back({pattern[at], pattern[isRange ? at + 2 : at]});
        at += isRange ? 2 : 0;
    }
    return end + 1;
}

bool Glob::matches(std::u16string_view text) const {
    const std::u32string characters = toCharacters(text);
    std::size_t at = 0;
    std::size_t element = 0;
    std::size_t lastRun = elements_.size();
    std::size_t lastRunEnd = 0;
    while (at < characters.size()) {
        if (element < elements_.size() && elements_[element].isRun) {
            lastRun = element++;
            lastRunEnd = at;
        } else if (element < elements_.size() && elements_[element].accepts(characters[at])) {
            ++element;
            ++at;
        } else if (lastRun < elements_.size()) {
            // Only the last run may have to take more: what precedes it has been matched already.
            element = lastRun + 1;
            at = ++lastRunEnd;
        } else {
            return false;
        }
    }
    return std::all_of(elements_.begin() + static_cast<std::ptrdiff_t>(element), elements_.end(),
                       [](const Element& rest) { return rest.isRun; });
}

} // namespace refdoc
