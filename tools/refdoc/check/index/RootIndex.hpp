#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include <boost/json/value.hpp>

#include "refdoc/catalog/LookupIndex.hpp"
#include "refdoc/check/index/ParsedText.hpp"

namespace refdoc {

/// Which language a text counts as, and who gets it.
struct LookupKind {
    std::string language;
    std::string readers;

    bool operator<(const LookupKind& other) const {
        return std::tie(language, readers) < std::tie(other.language, other.readers);
    }
};

inline const LookupKind kEnglishForAll{"en", "en"};

/// What is known about all files of a root, for faults that only show between files.
class RootIndex {
public:
    RootIndex() = default;
    RootIndex(const RootIndex&) = delete;
    RootIndex& operator=(const RootIndex&) = delete;

    /// Sets and maps keyed by strings from documents. They are ordered because the authors of
    /// documents could attack the standard library's hash function.
    using TextSet = std::set<std::string, std::less<>>;
    template <typename T>
    using TextMap = std::map<std::string, T, std::less<>>;
    /// The number of items for each href.
    using HrefCounts = TextMap<std::size_t>;

    void addFile(const CatalogFile& file);
    /// Texts must be added in the order in which the library reads them.
    void addSoundText(const ParsedText& parsed);
    /// The pages that a full reference file documents, sound or not: links to them are meant.
    void addPages(const CatalogFile& file, const boost::json::value& resource);
    /// A full reference file whose pages are unknown.
    void addUnreadable(const CatalogFile& file) { unreadable_.insert(file.resource); }

    /// Must be called after the last text, before `lookups` is queried.
    void finish() { lookupIndex_.finish(); }

    /// The number of a lookup file's text in `lookups`; empty for an unsound text.
    std::optional<std::uint32_t> numberOf(const ParsedText& parsed) const;
    const LookupIndex& lookups() const { return lookupIndex_; }
    bool hasReferenceFile(const std::string& stem) const { return referenceStems_.contains(stem); }
    bool hasPage(const std::string& page) const { return pages_.contains(page); }
    bool hasPage(const std::string& resource, const std::string& page) const;
    /// Whether only part of the pages of a resource is known.
    bool isUnreadable(const std::string& resource) const { return unreadable_.contains(resource); }

    /// Whether a resource has a sound English full reference file.
    bool hasEnglish(const std::string& resource) const;
    /// The items of the English document that a localized one is laid over; null if there is none.
    const HrefCounts* englishItems(const std::string& resource, const std::string& key) const;

    /// A text of a lookup file, numbered in the order of addition.
    using TextNumber = std::uint32_t;
    /// Which text of one kind holds a document, and each name in it: the first for English texts,
    /// the last for localized ones.
    struct LookupHolders {
        TextNumber document;
        TextMap<TextNumber> names;
    };
    /// Null if no text of the kind has a document of the key.
    const LookupHolders* holdersOf(const LookupKind& kind, const std::string& key) const;
    /// The name of a text as messages show it.
    const std::string& shownName(TextNumber text) const { return texts_[text]; }

private:
    using LookupDocuments = std::map<std::string, LookupHolders>; ///< by key

    /// A text by the name of its file and its number within the file.
    using TextPlace = std::pair<std::string, std::size_t>;

    void addLookups(const ParsedText& parsed);
    void addReferences(const CatalogFile& file, const boost::json::value& resource);

    std::set<std::string> referenceStems_;
    std::map<TextPlace, TextNumber> numbers_; ///< of the texts of lookup files
    TextSet pages_;
    /// By resource; the views point into `pages_`.
    std::map<std::string, std::set<std::string_view>> pagesOf_;
    std::set<std::string> unreadable_;
    std::vector<std::string> texts_; ///< as messages show them
    LookupIndex lookupIndex_;
    std::map<LookupKind, LookupDocuments> lookups_;
    /// By resource and key.
    std::map<std::string, std::map<std::string, HrefCounts>> englishReferences_;
};

} // namespace refdoc
