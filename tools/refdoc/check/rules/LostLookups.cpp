#include "refdoc/check/rules/LostLookups.hpp"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <tuple>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <fmt/format.h>

#include "refdoc/format/ResourceDocuments.hpp"
#include "refdoc/text/Text.hpp"
#include "reference/docparser/ParsingTools.hpp"

namespace refdoc {

namespace {

namespace json = boost::json;
using reference::property::HeaderInfo;
namespace parsing = reference::docparser::DocResourceParser::ParsingTools;

bool isSameHeader(const HeaderInfo& left, const HeaderInfo& right) {
    const auto textsOf = [](const HeaderInfo& header) {
        return std::tie(header.getProductName(), header.getBaseCode(), header.getHelpFolder(),
                        header.getHelpLocation());
    };
    return textsOf(left) == textsOf(right);
}

/// The key as the library reads it, byte by byte.
std::u16string keyOf(const ResourceDocument& document) {
    const HeaderInfo header = parsing::getHeaderInfo(*document.value);
    return document.pointer.empty() ? header.getHelpFolder() : header.getBaseCode();
}

/// Checks what readers get of one document of a text.
class DocumentCheck {
public:
    DocumentCheck(const ParsedText& parsed, const RootIndex& index,
                  const ResourceDocument& document, Violations& violations)
        : text_(parsed.text), shownName_(parsed.shownName()), index_(index), document_(document),
          violations_(violations) {}

    void checkHeader(const LookupIndex::Document& indexed) {
        const HeaderInfo* delivered = index_.lookups().headerFor(indexed, text_.readers);
        const bool isLocalized = fillsIn() && holdersOf(localizedKind()) != nullptr;
        if (isLocalized || delivered == nullptr ||
            isSameHeader(*delivered, parsing::getHeaderInfo(*document_.value)))
            return;
        const std::string what = fmt::format("the document {}", inQuotes(document_.key));
        violations_.add({.fault = Fault::SharedKey,
                         .message = countsInstead(what, nullptr) + ": its header counts",
                         .pointer = document_.pointer});
    }

    void checkItem(std::size_t number, const LookupFate& fate, const LookupFates& fates) {
        const json::value& item = itemsOf(document_)[number];
        name_ = textMember(item, "name");
        href_ = toUtf8(
            parsing::getFluString(item.as_object(), "href", parsing::StringParsingType::Ascii));
        pointer_ = itemPointer(document_, number);
        if (fate.isLost)
            return addLost(fate);
        for (const std::string& readers : fates.readersWithoutLink(fate))
            addReplaced(readers);
    }

private:
    /// English texts in a package of one language only fill gaps, and only for its readers.
    bool fillsIn() const { return text_.language != text_.readers; }

    LookupKind localizedKind() const { return {text_.readers, text_.readers}; }

    /// Built once: keys may be long, and items many.
    const RootIndex::LookupHolders* holdersOf(const LookupKind& kind) {
        const auto [known, isNew] = holders_.try_emplace(kind, nullptr);
        if (isNew)
            known->second = index_.holdersOf(kind, document_.key);
        return known->second;
    }

    /// The shown name of the text that holds the document, or a name in it; null if none does.
    const std::string* holderOf(const LookupKind& kind, const std::string* name) {
        const RootIndex::LookupHolders* holders = holdersOf(kind);
        if (holders == nullptr)
            return nullptr;
        if (name == nullptr)
            return &index_.shownName(holders->document);
        const auto found = holders->names.find(*name);
        return found == holders->names.end() ? nullptr : &index_.shownName(found->second);
    }

    /// The first English text counts, and the last localized one.
    std::string countsInstead(std::string_view what, const std::string* name) {
        const std::string* holder = holderOf({text_.language, text_.readers}, name);
        if (fillsIn() && (holder == nullptr || *holder == shownName_))
            holder = holderOf(kEnglishForAll, name);
        const bool isKnown = holder != nullptr && *holder != shownName_;
        return fmt::format("{} also has {} and is read {}",
                           isKnown ? shortenedPath(*holder) : "another entry", what,
                           text_.language == kEnglish ? "before" : "after");
    }

    void addLost(const LookupFate& fate) {
        const std::string* localized = fillsIn() ? holderOf(localizedKind(), &name_) : nullptr;
        if (localized == nullptr)
            violations_.add({.fault = Fault::LostItem,
                             .message = countsInstead("the name", &name_) + ": its lookups count",
                             .pointer = pointer_,
                             .loss = Loss::Item});
        else if (fate.isLinkLost)
            violations_.add({.fault = Fault::LostItem,
                             .message = withoutLink(text_.readers, localized),
                             .pointer = pointer_,
                             .loss = Loss::Item});
    }

    void addReplaced(const std::string& readers) {
        violations_.add({.fault = Fault::ReplacedItem,
                         .message = withoutLink(readers, holderOf({readers, readers}, &name_)),
                         .pointer = pointer_});
    }

    /// The lookups of a name in a localized text replace the English ones.
    std::string withoutLink(const std::string& readers, const std::string* holder) const {
        return fmt::format("readers of {} do not get it: {} has the name, but not the href {}",
                           readers, holder == nullptr ? "another entry" : shortenedPath(*holder),
                           inQuotes(href_));
    }

    /// The end of a path, which tells long paths apart.
    static std::string shortenedPath(const std::string& path) {
        constexpr std::size_t mostBytes = 300;
        return path.size() <= mostBytes ? path : "..." + path.substr(path.size() - mostBytes);
    }

    const CatalogText& text_;
    std::string shownName_;
    const RootIndex& index_;
    const ResourceDocument& document_;
    Violations& violations_;
    std::map<LookupKind, const RootIndex::LookupHolders*> holders_;
    std::string name_; ///< of the current item, as are the next two
    std::string href_;
    std::string pointer_;
};

} // namespace

void checkLookups(const ParsedText& parsed, const RootIndex& index, const LookupFates& fates,
                  Violations& violations) {
    const auto number = index.numberOf(parsed);
    if (!number)
        return;
    for (const ResourceDocument& document : documentsOf(parsed.tree)) {
        const LookupIndex::Document* indexed = index.lookups().find(keyOf(document));
        if (indexed == nullptr)
            continue; // the file has changed since
        DocumentCheck check(parsed, index, document, violations);
        check.checkHeader(*indexed);
        for (std::size_t i = 0; i < itemsOf(document).size(); ++i)
            if (const LookupFate* fate =
                    fates.find(*number, indexed->key, static_cast<std::uint32_t>(i)))
                check.checkItem(i, *fate, fates);
    }
}

} // namespace refdoc
