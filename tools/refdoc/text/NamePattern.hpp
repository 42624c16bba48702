#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "refdoc/text/Glob.hpp"

namespace refdoc {

/// How well a name fits a pattern, the best first.
enum class NameMatch { Same, SameButForCase, Prefix, Glob };

/// What the user types to find names. A glob stands for whole names, any other pattern for the name
/// itself and for all that begin with it. Letter case counts only when the pattern has an
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
    std::u16string comparable_; ///< the text, without letter case unless that counts
    Glob glob_;
};

} // namespace refdoc
