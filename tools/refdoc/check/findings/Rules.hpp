#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace refdoc {

enum class Level { Note, Warning, Error };

/// Indexed by `Level`.
inline constexpr std::array<std::string_view, 3> kLevelNames{"note", "warning", "error"};

constexpr std::string_view levelName(Level level) {
    return kLevelNames[static_cast<std::size_t>(level)];
}

/// What readers lose because of a fault.
enum class Loss { Nothing, Item, Document, Entry, File, Folder, Lookups };

/// The loss as a clause; empty for nothing.
constexpr std::string_view lossText(Loss loss) {
    constexpr std::array<std::string_view, 7> texts{"",
                                                    "the item is lost",
                                                    "the document is lost",
                                                    "the whole entry is lost",
                                                    "the whole file is lost",
                                                    "all files of the folder are lost",
                                                    "all lookup files are lost"};
    return texts[static_cast<std::size_t>(loss)];
}

/// The ways to break a rule.
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
    Level level; ///< the usual one
    std::string_view description;
};

/// Indexed by `Fault`.
inline constexpr std::array<Rule, 17> kRules{{
    {Fault::Unreadable, "unreadable", Level::Error,
     "A file, package or entry whose content cannot be read"},
    {Fault::NotJson, "not-json", Level::Error, "Text that is not JSON"},
    {Fault::MissingMember, "missing-member", Level::Error, "A required member that is missing"},
    {Fault::WrongKind, "wrong-kind", Level::Error,
     "A value of another kind than the format has at its place"},
    {Fault::RepeatedKey, "repeated-key", Level::Error,
     "A document with the key of an earlier one in its file"},
    {Fault::LostItem, "lost-item", Level::Error,
     "A lookup that another file of its language hides from readers"},
    {Fault::UnreadName, "unread-name", Level::Error,
     "A name that keeps a file or entry from being read"},
    {Fault::UnknownText, "unknown-text", Level::Warning,
     "An unknown value of an enumeration, which counts as the default"},
    {Fault::GarbledText, "garbled-text", Level::Warning,
     "A 7-bit text with characters beyond ASCII"},
    {Fault::ReplacedItem, "replaced-item", Level::Warning,
     "An English item that a localized file hides from readers of its language"},
    {Fault::RepeatedMember, "repeated-member", Level::Warning,
     "A member that an object has twice: the last one counts"},
    {Fault::UnreadMember, "unread-member", Level::Warning,
     "A member that seems intended but is not read where it stands"},
    {Fault::SharedKey, "shared-key", Level::Warning,
     "A document whose header another file's of its language replaces"},
    {Fault::UnknownLanguage, "unknown-language", Level::Warning,
     "A name that suggests another language than the one it is read as"},
    {Fault::NoEnglish, "no-english", Level::Warning,
     "A localized file, document or item without an English counterpart"},
    {Fault::DeadLink, "dead-link", Level::Warning, "A link that leads nowhere inside the root"},
    {Fault::OtherFile, "other-file", Level::Note,
     "Something in a catalog folder that is not a resource file"},
}};

constexpr const Rule& ruleOf(Fault fault) {
    return kRules[static_cast<std::size_t>(fault)];
}

static_assert(std::all_of(kRules.begin(), kRules.end(),
                          [](const Rule& rule) { return &ruleOf(rule.fault) == &rule; }));

} // namespace refdoc
