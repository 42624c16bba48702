#include "refdoc/catalog/LookupIndex.hpp"

#include <algorithm>
#include <list>
#include <map>
#include <optional>
#include <tuple>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include "refdoc/catalog/CatalogFolder.hpp"
#include "reference/docparser/DocParserException.hpp"
#include "reference/docparser/ParsingTools.hpp"

namespace refdoc {

namespace {

namespace json = boost::json;
namespace parsing = reference::docparser::DocResourceParser::ParsingTools;
using reference::docparser::DocParserException;
using reference::property::FunctionType;
using reference::property::HeaderInfo;
using reference::property::RefEntityType;

constexpr std::string_view kEveryone = kEnglish;

std::string_view requireText(const json::object& item, std::string_view member) {
    const json::value* value = item.if_contains(member);
    if (value == nullptr || !value->is_string())
        throw DocParserException();
    return value->get_string();
}

/// The number of the enumeration value that a member names, or of the default value.
template <typename Enumeration>
std::uint32_t enumerationOf(const json::object& item, std::string_view member) {
    const json::value* value = item.if_contains(member);
    if (value == nullptr || !value->is_string())
        return Enumeration::getDefaultValue();
    const auto& texts = Enumeration::texts;
    const auto found = std::find(texts.begin(), texts.end(), std::string_view(value->get_string()));
    return found == texts.end() ? std::uint32_t{Enumeration::getDefaultValue()}
                                : static_cast<std::uint32_t>(found - texts.begin());
}

std::uint32_t kindsOf(const json::object& item) {
    constexpr std::uint32_t factor = 256;
    const std::uint32_t deprecated = item.contains("deprecated") ? 1 : 0;
    return (enumerationOf<RefEntityType>(item, "type") * factor +
            enumerationOf<FunctionType>(item, "fcntype")) *
               factor +
           deprecated;
}

/// Merges the lookups of one name, text after text. Additions are kept behind the list that they
/// complete, so that a text costs time in proportion to its own lookups, however long the list is.
class MergedLookups {
public:
    using Lookups = LookupIndex::Lookups;

    explicit MergedLookups(NumberSet& scratch) : listHrefs_(scratch) { listHrefs_.clear(); }

    bool isEmpty() const { return list_.empty(); }

    /// A localized list replaces the list so far, which completes it if it is longer.
    void takePlace(Lookups list) {
        if (list.size() < list_.size() + behind_.size())
            putListBehindItself();
        else
            clearBehind();
        list_ = std::move(list);
        listHrefs_.clear();
        for (const IndexedLookup* lookup : list_)
            if (listHrefs_.insert(lookup->href))
                dropBehind(lookup->href);
    }

    /// An English list completes the list so far if it is longer.
    void fillIn(const Lookups& list) {
        if (list_.size() + behind_.size() >= list.size())
            return;
        for (const IndexedLookup* lookup : list)
            if (!listHrefs_.contains(lookup->href))
                putBehind(behind_.end(), lookup);
    }

    Lookups take() {
        list_.insert(list_.end(), behind_.begin(), behind_.end());
        return std::move(list_);
    }

private:
    using Sequence = std::list<const IndexedLookup*>;

    void putListBehindItself() {
        const auto front = behind_.begin();
        for (const IndexedLookup* lookup : list_)
            putBehind(front, lookup);
    }

    void putBehind(Sequence::const_iterator place, const IndexedLookup* lookup) {
        if (!places_.contains(lookup->href))
            places_.emplace(lookup->href, behind_.insert(place, lookup));
    }

    void dropBehind(std::uint32_t href) {
        const auto place = places_.find(href);
        if (place == places_.end())
            return;
        behind_.erase(place->second);
        places_.erase(place);
    }

    void clearBehind() {
        behind_.clear();
        places_.clear();
    }

    Lookups list_;
    NumberSet& listHrefs_;
    Sequence behind_;                                    // each href once, and none of the list
    std::map<std::uint32_t, Sequence::iterator> places_; // by href
};

} // namespace

std::uint32_t LookupIndex::add(const std::string& language, const std::string& readers,
                               const json::value& resource) {
    std::vector<NewDocument> documents{readDocument(resource, true)};
    if (const json::value* packages = resource.as_object().if_contains("supportPackages"))
        for (const json::value& package : parsing::getJsonArray(*packages))
            documents.push_back(readDocument(package, false));
    const auto text = static_cast<std::uint32_t>(texts_.size());
    texts_.push_back({readers, language != kEveryone});
    for (NewDocument& document : documents)
        addDocument(std::move(document), text);
    return text;
}

LookupIndex::NewDocument LookupIndex::readDocument(const json::value& document, bool isMain) {
    NewDocument read{{}, parsing::getHeaderInfo(document), {}};
    read.key = isMain ? read.header.getHelpFolder() : read.header.getBaseCode();
    const json::array& items = parsing::getJsonArray(document, "refItems");
    read.lookups.reserve(items.size());
    for (const json::value& item : items) {
        read.lookups.push_back(readLookup(item));
        read.lookups.back().item = static_cast<std::uint32_t>(read.lookups.size() - 1);
    }
    return read;
}

IndexedLookup LookupIndex::readLookup(const json::value& item) {
    const json::object* members = item.if_object();
    if (members == nullptr)
        throw DocParserException();
    IndexedLookup lookup{};
    lookup.name = numberOf(requireText(*members, "name"));
    lookup.purpose = numberOf(requireText(*members, "refpurpose"));
    lookup.href = numberOf(requireText(*members, "href"));
    lookup.kinds = kindsOf(*members);
    return lookup;
}

/// If a text has several documents of one key, the first one counts.
void LookupIndex::addDocument(NewDocument added, std::uint32_t text) {
    const auto key = static_cast<std::uint32_t>(documents_.size());
    Document& document =
        documents_.try_emplace(std::move(added.key), Document{key, text, {}}).first->second;
    if (!document.headers.empty() && document.lastText == text)
        return;
    document.lastText = text;
    addHeader({text, std::move(added.header)}, document);
    for (IndexedLookup& lookup : added.lookups) {
        lookup.key = document.key;
        lookup.text = text;
    }
    lookups_.insert(lookups_.end(), added.lookups.begin(), added.lookups.end());
}

void LookupIndex::addHeader(Header header, Document& document) const {
    const Text& text = texts_[header.text];
    const auto isAlike = [&](const Header& each) {
        return texts_[each.text].readers == text.readers &&
               texts_[each.text].isLocalized == text.isLocalized;
    };
    const auto known = std::find_if(document.headers.begin(), document.headers.end(), isAlike);
    if (known == document.headers.end())
        document.headers.push_back(std::move(header));
    else if (text.isLocalized)
        *known = std::move(header);
}

std::uint32_t LookupIndex::numberOf(std::string_view text) {
    const auto known = numbers_.find(text);
    if (known != numbers_.end())
        return known->second;
    const auto number = static_cast<std::uint32_t>(numbers_.size());
    numbers_.emplace(text, number);
    return number;
}

void LookupIndex::finish() {
    const auto place = [](const IndexedLookup& lookup) {
        return std::tie(lookup.key, lookup.name, lookup.text, lookup.item);
    };
    std::sort(lookups_.begin(), lookups_.end(),
              [&](const IndexedLookup& left, const IndexedLookup& right) {
                  return place(left) < place(right);
              });
}

bool LookupIndex::isFor(std::uint32_t text, std::string_view readers) const {
    return texts_[text].readers == readers || texts_[text].readers == kEveryone;
}

const LookupIndex::Document* LookupIndex::find(const std::u16string& key) const {
    const auto found = documents_.find(key);
    return found == documents_.end() ? nullptr : &found->second;
}

const HeaderInfo* LookupIndex::headerFor(const Document& document, std::string_view readers) const {
    const Header* held = nullptr;
    for (const Header& each : document.headers) {
        if (!isFor(each.text, readers))
            continue;
        if (texts_[each.text].isLocalized)
            return &each.header;
        if (held == nullptr || each.text < held->text)
            held = &each;
    }
    return held == nullptr ? nullptr : &held->header;
}

std::vector<LookupIndex::Group> LookupIndex::groups() const {
    std::vector<Group> groups;
    for (auto begin = lookups_.begin(); begin != lookups_.end();) {
        const auto end = std::find_if(begin, lookups_.end(), [begin](const IndexedLookup& lookup) {
            return lookup.key != begin->key || lookup.name != begin->name;
        });
        groups.emplace_back(begin, end);
        begin = end;
    }
    return groups;
}

std::set<std::string> LookupIndex::ownReaders(Group group) const {
    std::set<std::string> readers;
    std::optional<std::uint32_t> previous;
    for (const IndexedLookup& lookup : group)
        if (std::exchange(previous, lookup.text) != lookup.text &&
            readersOf(lookup.text) != kEveryone)
            readers.insert(readersOf(lookup.text));
    return readers;
}

LookupIndex::Lookups LookupIndex::lookupsFor(Group group, std::string_view readers,
                                             NumberSet& scratch) const {
    MergedLookups merged(scratch);
    for (auto at = group.begin(); at != group.end();) {
        const std::uint32_t text = at->text;
        Lookups lookups;
        for (; at != group.end() && at->text == text; ++at)
            lookups.push_back(&*at);
        if (!isFor(text, readers))
            continue;
        if (texts_[text].isLocalized || merged.isEmpty())
            merged.takePlace(std::move(lookups));
        else
            merged.fillIn(lookups);
    }
    return merged.take();
}

} // namespace refdoc
