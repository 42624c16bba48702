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

/// What is wrong, where, and what it costs. All texts are UTF-8, and as the files have them: not
/// yet safe to print.
struct Finding {
    Fault fault;
    Level level;
    Loss loss = Loss::Nothing;
    std::string file{};  ///< relative to the root; empty for the root itself
    std::string entry{}; ///< its whole name, when the fault lies in one entry of a package
    std::string pointer{};
    std::string item{}; ///< the name of the item that it concerns
    std::string message{};
    TextPosition position{}; ///< nowhere when the fault is the file's as a whole
    /// How many findings the list was too full for, when this one stands for them.
    std::size_t further = 0;
};

/// What was found in a root.
struct CheckResult {
    std::size_t fileCount = 0;
    /// In the order of files, entries and positions.
    std::vector<Finding> findings{};

    bool hasErrors() const;
};

/// What is wrong, with what, and what it costs: in one line.
std::string sentenceOf(const Finding& finding);

/// Stands for so many findings that are left out.
Finding furtherFindings(Fault fault, Level level, std::size_t count);

/// The beginning of a text that is too long to be read.
std::string shortened(std::string_view text);

/// A text for a message: in quotes, and shortened.
std::string inQuotes(std::string_view text);

/// The findings of a root, of which only so many bytes are kept, and the others counted.
class RootFindings {
public:
    static constexpr std::size_t kMostBytes = std::size_t{32} << 20;

    void add(std::vector<Finding> findings);

    /// The findings in the order of files, entries and positions, and at the end, about the root,
    /// how many of each kind and level were left out.
    std::vector<Finding> take();

private:
    std::vector<Finding> findings_;
    std::map<std::pair<Fault, Level>, std::size_t> further_;
    std::size_t bytes_ = 0;
};

} // namespace refdoc
