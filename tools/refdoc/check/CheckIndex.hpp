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
#include <vector>

#include <boost/json/value.hpp>

#include "refdoc/catalog/LookupIndex.hpp"
#include "refdoc/check/ResourceText.hpp"

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
class CheckIndex {
public:
    CheckIndex() = default;
    CheckIndex(const CheckIndex&) = delete;
    CheckIndex& operator=(const CheckIndex&) = delete;

    /// Sets and maps whose strings come from documents. They are ordered: whoever writes a document
    /// could aim at the standard library's hash.
    using TextSet = std::set<std::string, std::less<>>;
    template <typename T>
    using TextMap = std::map<std::string, T, std::less<>>;
    /// How many items there are of each href.
    using HrefCounts = TextMap<std::size_t>;

    void addFile(const CatalogFile& file);
    /// Texts come in the order in which the library reads them.
    void addSoundText(const ResourceText& text, const boost::json::value& resource);
    /// The pages that a full reference file documents, sound or not: links to them are meant.
    void addPages(const ResourceText& text, const boost::json::value& resource);
    /// A full reference file whose pages cannot be known.
    void addUnreadable(const CatalogFile& file) { unreadable_.insert(file.resource); }

    /// To be called after the last text, before what `lookups` gives is asked.
    void finish() { lookupIndex_.finish(); }

    /// The number that `lookups` knows a text by, anything for one that is no lookup file's.
    /// Nothing unless exactly this text was added as a sound one.
    std::optional<std::uint32_t> soundNumber(const ResourceText& text) const;
    const LookupIndex& lookups() const { return lookupIndex_; }
    bool hasReferenceFile(const std::string& stem) const { return referenceStems_.contains(stem); }
    bool hasPage(const std::string& page) const { return pages_.contains(page); }
    bool hasPage(const std::string& resource, const std::string& page) const;
    /// Whether the pages of a resource, named by its full reference files, are known in part only.
    bool isUnreadable(const std::string& resource) const { return unreadable_.contains(resource); }

    /// Whether the English file of a full reference file was sound.
    bool hasEnglish(const ResourceText& text) const;
    /// The items of the English document that a localized one of a full reference file is laid
    /// over; null when there is none.
    const HrefCounts* englishItems(const ResourceText& text, const std::string& key) const;

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
    using LookupDocuments = std::map<std::string, LookupHolders>; // by key

    /// A file may change between two readings.
    using Version = std::tuple<std::string, std::size_t, std::size_t>;
    static Version versionOf(const ResourceText& text);

    void addLookups(const ResourceText& text, const boost::json::value& resource);
    void addReferences(const ResourceText& text, const boost::json::value& resource);

    std::set<std::string> referenceStems_;
    std::map<Version, TextNumber> sound_;
    TextSet pages_;
    /// By resource; views of what is in `pages_`.
    std::map<std::string, std::set<std::string_view>> pagesOf_;
    std::set<std::string> unreadable_;
    std::vector<std::string> texts_; // as they are shown
    LookupIndex lookupIndex_;
    std::map<LookupKind, LookupDocuments> lookups_;
    std::map<std::string, std::map<std::string, HrefCounts>>
        englishReferences_; // by resource and key
};

} // namespace refdoc
