#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "refdoc/text/Glob.hpp"

namespace refdoc {

/// How well a name matches a pattern, from best to worst.
enum class NameMatch { Same, SameButForCase, Prefix, Glob };

/// A pattern that the user types to find names. A glob matches whole names; any other pattern
/// matches the name itself and all names that begin with it. Case counts only if the pattern has an
/// upper-case letter.
class NamePattern {
public:
    explicit NamePattern(std::u16string text);

    std::optional<NameMatch> match(std::u16string_view name) const;
    bool caseCounts() const { return caseCounts_; }
    bool isGlob() const { return glob_.isSpecial(); }

private:
    std::u16string text_;
    bool caseCounts_;
    std::u16string comparable_; ///< the text, case-folded unless case counts
    Glob glob_;
};

} // namespace refdoc
