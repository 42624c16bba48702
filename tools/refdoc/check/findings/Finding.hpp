#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "refdoc/check/findings/Rules.hpp"
#include "refdoc/format/JsonPositions.hpp"

namespace refdoc {

/// What is wrong, where, and what it costs readers. All texts are UTF-8 and unchanged from the
/// files: not yet safe to print.
struct Finding {
    Fault fault;
    Level level;
    Loss loss = Loss::Nothing;
    std::string file{};  ///< relative to the root; empty for the root itself
    std::string entry{}; ///< the full name of the entry with the fault, if any
    std::string pointer{};
    std::string item{}; ///< the name of the item concerned
    std::string message{};
    TextPosition position{}; ///< no place if the file as a whole is at fault
    /// For a finding that stands for those beyond a limit: their number.
    std::size_t further = 0;
};

/// The result of checking a root.
struct CheckResult {
    std::size_t fileCount = 0;
    /// Sorted by file, entry and position.
    std::vector<Finding> findings{};

    bool hasErrors() const;
};

/// The finding in one line: what is wrong, with which item, and what it costs.
std::string sentenceOf(const Finding& finding);

/// Findings of one kind beyond a limit, in a file or entry; of the root if `file` is empty.
struct FurtherFindings {
    Fault fault;
    Level level;
    std::size_t count;
    std::string file{};
    std::string entry{};
};

/// The finding that stands for them.
Finding findingOf(const FurtherFindings& further);

/// The text, cut to a length that people read.
std::string shortened(std::string_view text);

/// The text as messages quote it: shortened and in quotes.
std::string inQuotes(std::string_view text);

/// Collects the findings of a root. Keeps a bounded number of bytes and counts the rest.
class RootFindings {
public:
    static constexpr std::size_t kMostBytes = std::size_t{32} << 20;

    void add(std::vector<Finding> findings);

    /// The findings sorted by file, entry and position, followed by one about the root for each
    /// kind and level of which some were left out.
    std::vector<Finding> take();

private:
    std::vector<Finding> findings_;
    std::map<std::pair<Fault, Level>, std::size_t> further_;
    std::size_t bytes_ = 0;
};

} // namespace refdoc
