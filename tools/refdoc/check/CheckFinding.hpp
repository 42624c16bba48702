#pragma once

#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace refdoc {

enum class Level { Note, Warning, Error };

std::string_view levelName(Level level);

/// A text for a message: in quotes, and only the beginning of a long one.
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
    RepeatedMember,
    SharedKey,
    UnknownLanguage,
    NoEnglish,
    DeadLink,
    OtherFile
};

inline constexpr std::array<Rule, 15> kRules{{
    {"unreadable", Level::Error, "A file, package or leaf whose content cannot be had"},
    {"not-json", Level::Error, "Text that is not JSON"},
    {"missing-member", Level::Error, "A required member that is missing"},
    {"wrong-kind", Level::Error, "A value of another kind than the format has at its place"},
    {"repeated-key", Level::Error, "A document with the key of an earlier one in its file"},
    {"lost-item", Level::Error, "A lookup that another file of its language keeps from readers"},
    {"unread-name", Level::Error, "A name that keeps a file or leaf from being read"},
    {"unknown-text", Level::Warning, "An enumeration that counts as its default"},
    {"garbled-text", Level::Warning, "A 7-bit text with characters beyond ASCII"},
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

/// The findings of one file or leaf. Of a kind that is without end only so many are kept, and the
/// others counted.
class FindingList {
public:
    static constexpr std::size_t kMostOfOneKind = 10000;

    FindingList(std::string file, std::string leaf)
        : file_(std::move(file)), leaf_(std::move(leaf)) {}

    /// What one leaf loses is all that a plain file has.
    Loss wholeText() const { return leaf_.empty() ? Loss::File : Loss::Leaf; }

    /// @param level that of the fault's rule unless it is given.
    void add(Fault fault, Loss loss, std::string message, std::string pointer = {},
             std::optional<Level> level = {});
    /// The same with a position that is known already.
    void addAt(TextPosition position, Fault fault, Loss loss, std::string message,
               std::string pointer = {});

    bool losesText() const { return losesText_; }
    std::vector<Finding>& kept() { return findings_; }

    /// The findings, and one more for each kind of which some were left out.
    std::vector<Finding> take();

private:
    std::string file_;
    std::string leaf_;
    std::vector<Finding> findings_;
    std::map<Fault, std::size_t> counts_;
    bool losesText_ = false;
};

} // namespace refdoc
