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

/// What a text counts as, and who gets it.
struct LookupKind {
    std::string language;
    std::string readers;

    bool operator<(const LookupKind& other) const {
        return std::tie(language, readers) < std::tie(other.language, other.readers);
    }
};

/// English texts for everybody.
inline const LookupKind kEnglishForAll{"en", "en"};

/// What is known of all files of a root, for the faults that only show between them.
class RootIndex {
public:
    RootIndex() = default;
    RootIndex(const RootIndex&) = delete;
    RootIndex& operator=(const RootIndex&) = delete;

    /// Sets and maps whose strings come from documents. They are ordered: whoever writes a document
    /// could aim at the standard library's hash.
    using TextSet = std::set<std::string, std::less<>>;
    template <typename T>
    using TextMap = std::map<std::string, T, std::less<>>;
    /// How many items there are of each href.
    using HrefCounts = TextMap<std::size_t>;

    void addFile(const CatalogFile& file);
    /// Texts come in the order in which the library reads them.
    void addSoundText(const ParsedText& parsed);
    /// The pages that a full reference file documents, sound or not: links to them are meant.
    void addPages(const CatalogFile& file, const boost::json::value& resource);
    /// A full reference file whose pages cannot be known.
    void addUnreadable(const CatalogFile& file) { unreadable_.insert(file.resource); }

    /// To be called after the last text, before what `lookups` gives is asked.
    void finish() { lookupIndex_.finish(); }

    /// The number that `lookups` knows the text of a lookup file by; nothing for one that was not
    /// sound.
    std::optional<std::uint32_t> numberOf(const ParsedText& parsed) const;
    const LookupIndex& lookups() const { return lookupIndex_; }
    bool hasReferenceFile(const std::string& stem) const { return referenceStems_.contains(stem); }
    bool hasPage(const std::string& page) const { return pages_.contains(page); }
    bool hasPage(const std::string& resource, const std::string& page) const;
    /// Whether the pages of a resource, named by its full reference files, are known in part only.
    bool isUnreadable(const std::string& resource) const { return unreadable_.contains(resource); }

    /// Whether the English full reference file of a resource was sound.
    bool hasEnglish(const std::string& resource) const;
    /// The items of the English document that a localized one of a full reference file is laid
    /// over; null when there is none.
    const HrefCounts* englishItems(const std::string& resource, const std::string& key) const;

    /// A text of a lookup file, by the order in which it was added.
    using TextNumber = std::uint32_t;
    /// Where a document, and each name in it, is found among the texts of one kind: of English
    /// texts that have it the first, of localized ones the last.
    struct LookupHolders {
        TextNumber document;
        TextMap<TextNumber> names;
    };
    /// Null when no text of the kind has a document of the key.
    const LookupHolders* holdersOf(const LookupKind& kind, const std::string& key) const;
    /// A text as it is shown.
    const std::string& shownName(TextNumber text) const { return texts_[text]; }

private:
    using LookupDocuments = std::map<std::string, LookupHolders>; ///< by key

    /// A text by the name of its file and its number in that.
    using TextPlace = std::pair<std::string, std::size_t>;

    void addLookups(const ParsedText& parsed);
    void addReferences(const CatalogFile& file, const boost::json::value& resource);

    std::set<std::string> referenceStems_;
    std::map<TextPlace, TextNumber> numbers_; ///< of the texts of lookup files
    TextSet pages_;
    /// By resource; views of what is in `pages_`.
    std::map<std::string, std::set<std::string_view>> pagesOf_;
    std::set<std::string> unreadable_;
    std::vector<std::string> texts_; ///< as they are shown
    LookupIndex lookupIndex_;
    std::map<LookupKind, LookupDocuments> lookups_;
    /// By resource and key.
    std::map<std::string, std::map<std::string, HrefCounts>> englishReferences_;
};

} // namespace refdoc
