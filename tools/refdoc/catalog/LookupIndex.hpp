#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <boost/json/value.hpp>

#include "environment/ReferenceProperty.hpp"

namespace refdoc {

/// A lookup. Equal texts have equal numbers, and different ones different numbers.
struct IndexedLookup {
    std::uint32_t key; ///< the number of the document's key
    std::uint32_t name;
    std::uint32_t text; ///< the number of the file's or entry's text
    std::uint32_t item; ///< its place among the document's items
    std::uint32_t href;
    std::uint32_t purpose;
    std::uint32_t kinds; ///< what it is, its function's kind and whether it is deprecated
};

/// A set of numbers that is emptied at once.
class NumberSet {
public:
    explicit NumberSet(std::size_t numberCount) : rounds_(numberCount, 0) {}

    void clear() { ++round_; }
    /// Whether it was not there yet.
    bool insert(std::uint32_t number) { return std::exchange(rounds_[number], round_) != round_; }
    bool contains(std::uint32_t number) const { return rounds_[number] == round_; }

private:
    std::vector<std::uint32_t> rounds_; ///< in which each number was inserted last
    std::uint32_t round_ = 1;
};

/// What all lookup files of a root say, each text read once, and what readers of each language get
/// of it: by the library's rules of merging, so that it is what `getResourceLookupFiles` gives in
/// that language. It takes 28 bytes for each lookup, and each distinct text once.
class LookupIndex {
public:
    /// The lookups of one document key and one name, in the order of texts and items.
    using Group = std::span<const IndexedLookup>;
    using Lookups = std::vector<const IndexedLookup*>;

    /// Of a document, in one text.
    struct Header {
        std::uint32_t text;
        reference::property::HeaderInfo header;
    };
    /// The document of one key.
    struct Document {
        std::uint32_t key;      ///< its number, from 0
        std::uint32_t lastText; ///< of those that have it
        /// For each language of readers that of the last localized text and that of the first
        /// English one.
        std::vector<Header> headers;
    };

    /// Adds the text that comes next in the order in which the library reads them.
    ///
    /// @param language what it counts as.
    /// @param readers the language of those who get it; "en" for everybody.
    /// @return the text's number, from 0.
    /// @throws DocParserException for a text that the library refuses as well; it is not added.
    std::uint32_t add(const std::string& language, const std::string& readers,
                      const boost::json::value& resource);

    /// To be called once after the last text, before any question.
    void finish();

    /// By key.
    const std::map<std::u16string, Document>& documents() const { return documents_; }
    /// Null when no text has a document of the key.
    const Document* find(const std::u16string& key) const;

    /// The header that readers of a language get; null when they get no such document.
    const reference::property::HeaderInfo* headerFor(const Document& document,
                                                     std::string_view readers) const;

    /// All groups, in the order of their keys' and names' numbers.
    std::vector<Group> groups() const;

    /// The languages other than English whose readers alone get something of the group.
    std::set<std::string> ownReaders(Group group) const;

    /// What readers of a language get of the group. Takes time linear in it.
    Lookups lookupsFor(Group group, std::string_view readers, NumberSet& scratch) const;

    std::uint32_t textCount() const { return static_cast<std::uint32_t>(texts_.size()); }
    const std::string& readersOf(std::uint32_t text) const { return texts_[text].readers; }

    /// A set for the numbers of names, hrefs and purposes.
    NumberSet emptySet() const { return NumberSet(numbers_.size()); }

private:
    struct Text {
        std::string readers;
        bool isLocalized;
    };
    struct NewDocument {
        std::u16string key;
        reference::property::HeaderInfo header;
        std::vector<IndexedLookup> lookups;
    };

    NewDocument readDocument(const boost::json::value& document, bool isMain);
    IndexedLookup readLookup(const boost::json::value& item);
    void addDocument(NewDocument document, std::uint32_t text);
    void addHeader(Header header, Document& document) const;
    std::uint32_t numberOf(std::string_view text);
    bool isFor(std::uint32_t text, std::string_view readers) const;

    std::vector<Text> texts_;
    std::map<std::u16string, Document> documents_;
    std::vector<IndexedLookup> lookups_;
    std::map<std::string, std::uint32_t, std::less<>> numbers_;
};

} // namespace refdoc
