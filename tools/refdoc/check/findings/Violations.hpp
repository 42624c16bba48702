#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <boost/json/value.hpp>

#include "refdoc/check/findings/Finding.hpp"
#include "refdoc/check/findings/Rules.hpp"

namespace refdoc {

/// That a file, an entry of a package or something in its text breaks a rule.
struct Violation {
    Fault fault;
    std::string message;
    /// To what breaks the rule; nothing when it is the file or entry as a whole.
    std::optional<std::string> pointer{};
    Loss loss = Loss::Nothing;
    Level level = ruleOf(fault).level;
    /// Where in the text that is, when the rule knows it without a search.
    std::optional<std::size_t> offset{};
};

/// A JSON text and its tree.
struct TextAndTree {
    std::string_view text;
    const boost::json::value* tree; ///< null when it is not JSON
};

/// What breaks rules in one file or entry. Hostile files have faults without end, and names without
/// end in each: only so many are kept, and the others counted.
class Violations {
public:
    static constexpr std::size_t kMostOfOneKind = 10000;
    static constexpr std::size_t kMostBytes = std::size_t{4} << 20;

    /// @param file relative to the root
    /// @param entry the whole name of the entry; empty for a plain file, or for the file itself.
    explicit Violations(std::string file, std::string entry = {})
        : file_(std::move(file)), entry_(std::move(entry)) {}

    /// What a fault costs that makes the text useless.
    Loss wholeText() const { return entry_.empty() ? Loss::File : Loss::Entry; }

    void add(Violation violation);
    /// Whether another one of this kind would be kept, if there is room for its texts. Saves making
    /// these in vain.
    bool hasRoomFor(Fault fault) const;
    /// Counts violations that nobody could keep.
    void addFurther(Fault fault, std::size_t count);
    /// Adds those of another list about the same text.
    void add(Violations&& others);

    /// Whether something costs the whole text.
    bool losesText() const { return losesText_; }

    /// The findings, with their positions in the text and the items that they concern, and one more
    /// for each kind and level of which some were left out. It goes once through the text unless
    /// nothing has a place in it.
    std::vector<Finding> findings(const TextAndTree& text) const;

    /// The same of a file whose text cannot be had.
    std::vector<Finding> findings() const { return findings({{}, nullptr}); }

private:
    struct Count {
        std::size_t kept = 0;
        std::size_t further = 0;
    };

    std::vector<std::size_t> offsetsIn(std::string_view text) const;
    Finding findingOf(const Violation& violation, const boost::json::value* tree) const;
    void addFurtherTo(std::vector<Finding>& findings) const;

    std::string file_;
    std::string entry_;
    std::vector<Violation> violations_;
    std::map<std::pair<Fault, Level>, Count> counts_;
    std::size_t bytes_ = 0;
    bool losesText_ = false;
};

} // namespace refdoc
