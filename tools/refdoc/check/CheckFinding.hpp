#pragma once

#include <array>
#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace refdoc {

enum class Level { Note, Warning, Error };

std::string_view levelName(Level level);

/// The beginning of a text that is too long to be read.
std::string shortened(std::string_view text);

/// A text for a message: in quotes, and shortened.
std::string inQuotes(std::string_view text);

/// What readers do not get because of a fault.
enum class Loss { Nothing, Item, Document, Leaf, File };

/// What is lost, as a clause of its own; empty for nothing.
std::string_view lossText(Loss loss);

struct Rule {
    std::string_view id;
    Level level;
    std::string_view description;
};

/// The faults that are looked for, each the index of its entry in `kRules`.
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
    SharedKey,
    UnknownLanguage,
    NoEnglish,
    DeadLink,
    OtherFile
};

inline constexpr std::array<Rule, 16> kRules{{
    {"unreadable", Level::Error, "A file, package or leaf whose content cannot be had"},
    {"not-json", Level::Error, "Text that is not JSON"},
    {"missing-member", Level::Error, "A required member that is missing"},
    {"wrong-kind", Level::Error, "A value of another kind than the format has at its place"},
    {"repeated-key", Level::Error, "A document with the key of an earlier one in its file"},
    {"lost-item", Level::Error, "A lookup that another file of its language keeps from readers"},
    {"unread-name", Level::Error, "A name that keeps a file or leaf from being read"},
    {"unknown-text", Level::Warning, "An enumeration that counts as its default"},
    {"garbled-text", Level::Warning, "A 7-bit text with characters beyond ASCII"},
    {"replaced-item", Level::Warning,
     "An English item that a localized file takes from the readers of its language"},
    {"repeated-member", Level::Warning, "A member that an object has twice: the last one counts"},
    {"shared-key", Level::Warning,
     "A document whose header another file's of its language replaces"},
    {"unknown-language", Level::Warning, "A name that tells another language than it is read as"},
    {"no-english", Level::Warning, "Something localized that there is not in English"},
    {"dead-link", Level::Warning, "A link that leads nowhere inside the root"},
    {"other-file", Level::Note, "Something among the resource files that is none"},
}};

constexpr const Rule& ruleOf(Fault fault) {
    return kRules[static_cast<std::size_t>(fault)];
}

/// Where in a text; lines and columns count from 1, and columns in characters.
struct TextPosition {
    std::size_t line = 0; ///< 0 when the fault is the file's as a whole
    std::size_t column = 0;
};

/// All texts are UTF-8, and as the files have them: not yet safe to print.
struct Finding {
    Fault fault;
    Level level;
    Loss loss;
    std::string file; ///< relative to the root
    /// The whole name of an entry; empty unless the file is a package and the fault lies in one
    /// leaf.
    std::string leaf;
    std::string pointer;
    std::string item;
    std::string message;
    TextPosition position{};
    std::size_t further = 0; ///< of how many findings that are left out this one tells
};

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

/// What is said of findings that are left out.
std::string furtherText(Fault fault, std::size_t count);

} // namespace refdoc
