#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "refdoc/format/JsonPositions.hpp"

namespace refdoc {

enum class Level { Note, Warning, Error };

/// By the level.
inline constexpr std::array<std::string_view, 3> kLevelNames{"note", "warning", "error"};

constexpr std::string_view levelName(Level level) {
    return kLevelNames[static_cast<std::size_t>(level)];
}

/// The beginning of a text that is too long to be read.
std::string shortened(std::string_view text);

/// A text for a message: in quotes, and shortened.
std::string inQuotes(std::string_view text);

/// What readers do not get because of a fault.
enum class Loss { Nothing, Item, Document, Leaf, File, Folder, Lookups };

/// What is lost, as a clause of its own; empty for nothing.
std::string_view lossText(Loss loss);

/// The faults that are looked for.
enum class Fault {
    Unreadable,
    NotJson,
    MissingMember,
    WrongKind,
    RepeatedKey,
    LostItem,
    UnreadName,
    UnknownText,
    GarbledText,
    ReplacedItem,
    RepeatedMember,
    UnreadMember,
    SharedKey,
    UnknownLanguage,
    NoEnglish,
    DeadLink,
    OtherFile
};

struct Rule {
    Fault fault;
    std::string_view id;
    Level level;
    std::string_view description;
};

/// By the fault.
inline constexpr std::array<Rule, 17> kRules{{
    {Fault::Unreadable, "unreadable", Level::Error,
     "A file, package or leaf whose content cannot be had"},
    {Fault::NotJson, "not-json", Level::Error, "Text that is not JSON"},
    {Fault::MissingMember, "missing-member", Level::Error, "A required member that is missing"},
    {Fault::WrongKind, "wrong-kind", Level::Error,
     "A value of another kind than the format has at its place"},
    {Fault::RepeatedKey, "repeated-key", Level::Error,
     "A document with the key of an earlier one in its file"},
    {Fault::LostItem, "lost-item", Level::Error,
     "A lookup that another file of its language keeps from readers"},
    {Fault::UnreadName, "unread-name", Level::Error,
     "A name that keeps a file or leaf from being read"},
    {Fault::UnknownText, "unknown-text", Level::Warning,
     "An enumeration that counts as its default"},
    {Fault::GarbledText, "garbled-text", Level::Warning,
     "A 7-bit text with characters beyond ASCII"},
    {Fault::ReplacedItem, "replaced-item", Level::Warning,
     "An English item that a localized file takes from the readers of its language"},
    {Fault::RepeatedMember, "repeated-member", Level::Warning,
     "A member that an object has twice: the last one counts"},
    {Fault::UnreadMember, "unread-member", Level::Warning,
     "A member that seems to be meant and is not read where it stands"},
    {Fault::SharedKey, "shared-key", Level::Warning,
     "A document whose header another file's of its language replaces"},
    {Fault::UnknownLanguage, "unknown-language", Level::Warning,
     "A name that tells another language than it is read as"},
    {Fault::NoEnglish, "no-english", Level::Warning,
     "Something localized that there is not in English"},
    {Fault::DeadLink, "dead-link", Level::Warning, "A link that leads nowhere inside the root"},
    {Fault::OtherFile, "other-file", Level::Note,
     "Something among the resource files that is none"},
}};

constexpr const Rule& ruleOf(Fault fault) {
    return kRules[static_cast<std::size_t>(fault)];
}

static_assert(std::all_of(kRules.begin(), kRules.end(),
                          [](const Rule& rule) { return &ruleOf(rule.fault) == &rule; }));

/// All texts are UTF-8, and as the files have them: not yet safe to print.
struct Finding {
    Fault fault;
    Level level;
    Loss loss;
    std::string file; ///< relative to the root; empty for the root itself
    /// The whole name of an entry; empty unless the file is a package and the fault lies in one
    /// leaf.
    std::string leaf;
    std::string pointer;
    std::string item;
    std::string message;
    TextPosition position{}; ///< nowhere when the fault is the file's as a whole
    std::size_t further = 0; ///< of how many findings that are left out this one tells
};

/// What is wrong, with what, and what it costs: in one line.
std::string sentenceOf(const Finding& finding);

/// The findings of one file or leaf. Hostile files have faults without end, and names without end
/// in each: only so many are kept, and the others counted.
class FindingList {
public:
    static constexpr std::size_t kMostOfOneKind = 10000;
    static constexpr std::size_t kMostBytes = std::size_t{4} << 20;

    FindingList(std::string file, std::string leaf)
        : file_(std::move(file)), leaf_(std::move(leaf)) {}

    /// What one leaf loses is all that a plain file has.
    Loss wholeText() const { return leaf_.empty() ? Loss::File : Loss::Leaf; }

    void add(Fault fault, Loss loss, std::string message, std::string pointer = {});
    /// @return the finding, valid until the next one is added; null for one that is only counted.
    Finding* addAt(Level level, Fault fault, Loss loss, std::string message,
                   std::string pointer = {});
    /// Counts findings that nobody could keep.
    void addFurther(Fault fault, std::size_t count);

    bool losesText() const { return losesText_; }
    std::vector<Finding>& kept() { return findings_; }

    /// The findings, and one more for each kind and level of which some were left out.
    std::vector<Finding> take();

private:
    struct Count {
        std::size_t kept = 0;
        std::size_t further = 0;
    };

    std::string file_;
    std::string leaf_;
    std::vector<Finding> findings_;
    std::map<std::pair<Fault, Level>, Count> counts_;
    std::size_t bytes_ = 0;
    bool losesText_ = false;
};

/// The findings of a root, of which only so many bytes are kept, and the others counted.
class RootFindings {
public:
    static constexpr std::size_t kMostBytes = std::size_t{32} << 20;

    void add(std::vector<Finding> findings);

    /// The findings in the order of files, leaves and positions, and at the end, about the root,
    /// how many of each kind and level were left out.
    std::vector<Finding> take();

private:
    std::vector<Finding> findings_;
    std::map<std::pair<Fault, Level>, std::size_t> further_;
    std::size_t bytes_ = 0;
};

/// What is said of findings that are left out.
std::string furtherText(Fault fault, std::size_t count);

} // namespace refdoc
