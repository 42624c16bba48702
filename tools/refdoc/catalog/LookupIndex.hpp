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

/// A lookup. Two texts have the same number exactly if they are equal.
struct IndexedLookup {
    std::uint32_t key; ///< the number of the document's key
    std::uint32_t name;
    std::uint32_t text; ///< the number of the file's or entry's text
    std::uint32_t item; ///< its place among the document's items
    std::uint32_t href;
    std::uint32_t purpose;
    std::uint32_t kinds; ///< type, function type and deprecation
};

/// A set of numbers that can be emptied in constant time.
class NumberSet {
public:
    explicit NumberSet(std::size_t numberCount) : rounds_(numberCount, 0) {}

    void clear() { ++round_; }
    /// Returns whether the number is new.
    bool insert(std::uint32_t number) { return std::exchange(rounds_[number], round_) != round_; }
    bool contains(std::uint32_t number) const { return rounds_[number] == round_; }

private:
    std::vector<std::uint32_t> rounds_; ///< when each number was inserted last
    std::uint32_t round_ = 1;
};

/// The contents of all lookup files of a root, each text read once, and what readers of each
/// language get of them: merged by the library's rules, the result equals what
/// `getResourceLookupFiles` gives in that language. Takes 28 bytes for each lookup, and keeps each
/// distinct text once.
class LookupIndex {
public:
    /// The lookups of one document key and one name, in the order of texts and items.
    using Group = std::span<const IndexedLookup>;
    using Lookups = std::vector<const IndexedLookup*>;

    /// The header of a document in one text.
    struct Header {
        std::uint32_t text;
        reference::property::HeaderInfo header;
    };
    /// The documents of one key.
    struct Document {
        std::uint32_t key;      ///< its number, from 0
        std::uint32_t lastText; ///< the last one that has it
        /// For each language of readers, the header of the last localized text and of the first
        /// English one.
        std::vector<Header> headers;
    };

    /// Adds the next text, in the order in which the library reads them.
    ///
    /// @param language the language that the text counts as.
    /// @param readers the language of those who get it; "en" for everybody.
    /// @return the text's number, from 0.
    /// @throws DocParserException for a text that the library refuses, too; it is not added.
    std::uint32_t add(const std::string& language, const std::string& readers,
                      const boost::json::value& resource);

    /// Must be called once, after the last text and before any query.
    void finish();

    /// By key.
    const std::map<std::u16string, Document>& documents() const { return documents_; }
    /// Null when no text has a document of the key.
    const Document* find(const std::u16string& key) const;

    /// The header that readers of a language get; null if they get no such document.
    const reference::property::HeaderInfo* headerFor(const Document& document,
                                                     std::string_view readers) const;

    /// All groups, ordered by the numbers of their keys and names.
    std::vector<Group> groups() const;

    /// The languages other than English that have texts of their own in the group.
    std::set<std::string> ownReaders(Group group) const;

    /// The lookups of the group that readers of a language get, in time linear in the group.
    Lookups lookupsFor(Group group, std::string_view readers, NumberSet& scratch) const;

    std::uint32_t textCount() const { return static_cast<std::uint32_t>(texts_.size()); }
    const std::string& readersOf(std::uint32_t text) const { return texts_[text].readers; }

    /// A set that can hold the numbers of names, hrefs and purposes.
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
