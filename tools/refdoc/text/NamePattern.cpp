#include "refdoc/text/NamePattern.hpp"

#include <utility>

#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include "refdoc/text/Text.hpp"

namespace refdoc {

namespace {

bool hasUpperCaseLetter(std::u16string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        UChar32 character;
        U16_NEXT(text.data(), at, text.size(), character);
        if (u_isUUppercase(character) || u_istitle(character))
            return true;
    }
    return false;
}

} // namespace

NamePattern::NamePattern(std::u16string text)
    : text_(std::move(text)), caseCounts_(hasUpperCaseLetter(text_)),
      comparable_(caseCounts_ ? text_ : foldCase(text_)), glob_(comparable_) {}

std::optional<NameMatch> NamePattern::match(std::u16string_view name) const {
    if (name == text_)
        return NameMatch::Same;
    const std::u16string comparable = caseCounts_ ? std::u16string(name) : foldCase(name);
    if (comparable == comparable_)
        return NameMatch::SameButForCase;
    if (!isGlob())
        return comparable.starts_with(comparable_) ? std::optional(NameMatch::Prefix)
                                                   : std::nullopt;
    return glob_.matches(comparable) ? std::optional(NameMatch::Glob) : std::nullopt;
}

} // namespace refdoc
