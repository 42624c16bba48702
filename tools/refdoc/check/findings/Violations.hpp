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

/// A breach of a rule by a file, an entry of a package or something in its text.
struct Violation {
    Fault fault;
    std::string message;
    /// Leads to the value that breaks the rule; empty if the file or entry as a whole does.
    std::optional<std::string> pointer{};
    Loss loss = Loss::Nothing;
    Level level = ruleOf(fault).level;
    /// The byte offset of the place in the text, if the rule knows it without a search.
    std::optional<std::size_t> offset{};
};

struct TextAndTree {
    std::string_view text;
    const boost::json::value* tree; ///< null if the text is not JSON
};

/// Collects the violations in one file or entry. Hostile files have any number of faults, with
/// names of any length: a bounded number is kept, and the rest counted.
class Violations {
public:
    static constexpr std::size_t kMostOfOneKind = 10000;
    static constexpr std::size_t kMostBytes = std::size_t{4} << 20;

    /// @param file relative to the root
    /// @param entry the full name of the entry; empty for a plain file, or for a package itself.
    explicit Violations(std::string file, std::string entry = {})
        : file_(std::move(file)), entry_(std::move(entry)),
          wholeText_(entry_.empty() ? Loss::File : Loss::Entry) {}

    /// @param wholeText the loss caused by a fault that makes the whole text useless.
    Violations(std::string file, Loss wholeText) : file_(std::move(file)), wholeText_(wholeText) {}

    /// An empty list for the same file or entry.
    Violations emptyCopy() const {
        Violations copy(file_, wholeText_);
        copy.entry_ = entry_;
        return copy;
    }

    /// The loss caused by a fault that makes the whole text useless.
    Loss wholeText() const { return wholeText_; }

    void add(Violation violation);
    /// Whether another violation of this kind would be kept if there is room for its texts. Saves
    /// building messages in vain.
    bool hasRoomFor(Fault fault) const;
    /// Counts violations that are not kept.
    void addFurther(Fault fault, std::size_t count);
    /// Adds the violations of another list about the same text.
    void add(Violations&& others);

    /// Whether some violation makes readers lose the whole text.
    bool losesText() const { return losesText_; }

    /// The findings, with their positions in the text and the items they concern, followed by one
    /// for each kind and level of which some were left out. Makes a single pass over the text, and
    /// none if no violation has a place in it.
    std::vector<Finding> findings(const TextAndTree& text) const;

    /// The findings for a file whose text cannot be read.
    std::vector<Finding> findings() const { return findings({{}, nullptr}); }

private:
    struct Count {
        std::size_t kept = 0;
        std::size_t further = 0;
    };

    std::vector<std::size_t> offsetsIn(std::string_view text) const;
    Finding findingOf(const Violation& violation, const boost::json::value* tree,
                      TextPosition position) const;
    void addFurtherTo(std::vector<Finding>& findings) const;

    std::string file_;
    std::string entry_;
    Loss wholeText_;
    std::vector<Violation> violations_;
    std::map<std::pair<Fault, Level>, Count> counts_;
    std::size_t bytes_ = 0;
    bool losesText_ = false;
};

} // namespace refdoc
