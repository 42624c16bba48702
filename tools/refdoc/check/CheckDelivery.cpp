#include "refdoc/check/CheckDelivery.hpp"

#include <cstddef>
#include <string_view>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <fmt/format.h>

#include "refdoc/Text.hpp"
#include "refdoc/check/CheckNames.hpp"
#include "refdoc/check/ResourceDocument.hpp"
#include "reference/docparser/ParsingTools.hpp"

namespace refdoc {

namespace {

namespace json = boost::json;
using reference::property::HeaderInfo;
using reference::property::RefItemLookup;

class DeliveryCheck {
public:
    DeliveryCheck(const ResourceText& text, const CheckIndex& index, const Deliveries& deliveries,
                  FindingList& findings)
        : text_(text), index_(index), deliveries_(deliveries), findings_(findings) {}

    void check(const ResourceDocument& document) {
        const HeaderInfo header =
            reference::docparser::DocResourceParser::ParsingTools::getHeaderInfo(*document.value);
        const std::u16string& key =
            document.pointer.empty() ? header.getHelpFolder() : header.getBaseCode();
        if (!checkHeader(document, key, header))
            return;
        const json::array& items = document.value->at("refItems").as_array();
        for (std::size_t i = 0; i < items.size(); ++i)
            checkItem(document, key, lookupOf(items[i].as_object()),
                      fmt::format("{}/refItems/{}", document.pointer, i));
    }

private:
    const DeliveredLookups& ownDelivery() const { return deliveries_.at(text_.readers); }

    /// English texts in a package of one language only fill in for its readers.
    bool fillsIn() const { return text_.language != text_.readers; }

    LookupKind localizedKind() const { return {text_.readers, text_.readers}; }

    /// Of English texts the first counts, of localized ones the last. `find` gives the text that
    /// counts among those of a kind.
    template <typename Find>
    std::string countsInstead(std::string_view what, Find find) const {
        const std::string* holder = find(LookupKind{text_.language, text_.readers});
        if (fillsIn() && (holder == nullptr || *holder == text_.shownName()))
            holder = find(kEnglishForAll);
        const bool isKnown = holder != nullptr && *holder != text_.shownName();
        return fmt::format("{} has {} too and is read {}",
                           isKnown ? shortenedPath(*holder) : "another leaf", what,
                           text_.language == kEnglish ? "before" : "after");
    }

    /// The end of a path that is too long to be read.
    static std::string shortenedPath(const std::string& path) {
        constexpr std::size_t mostBytes = 300;
        return path.size() <= mostBytes ? path : "..." + path.substr(path.size() - mostBytes);
    }

    /// Whether readers get a document of the key at all.
    bool checkHeader(const ResourceDocument& document, const std::u16string& key,
                     const HeaderInfo& header) {
        const HeaderInfo* delivered = ownDelivery().header(key);
        if (delivered == nullptr) {
            findings_.add(Fault::LostItem, Loss::Document,
                          fmt::format("readers of {} get no document {}", text_.readers,
                                      inQuotes(document.key)),
                          document.pointer);
            return false;
        }
        const bool isLocalized =
            fillsIn() && index_.holderOf(localizedKind(), document.key) != nullptr;
        if (!isLocalized && !equals(*delivered, header))
            findings_.add(Fault::SharedKey, Loss::Nothing,
                          countsInstead(fmt::format("the document {}", inQuotes(document.key)),
                                        [&](const LookupKind& kind) {
                                            return index_.holderOf(kind, document.key);
                                        }) +
                              ": its header counts",
                          document.pointer);
        return true;
    }

    void checkItem(const ResourceDocument& document, const std::u16string& key,
                   const RefItemLookup& lookup, const std::string& pointer) {
        const std::string name = toUtf8(lookup.getName());
        if (!ownDelivery().has(key, lookup)) {
            const std::string* localized =
                fillsIn() ? index_.holderOf(localizedKind(), document.key, name) : nullptr;
            if (localized == nullptr)
                addLost(document, name, pointer);
            else if (!ownDelivery().hasLink(key, lookup))
                addReplaced(Fault::LostItem, Loss::Item, text_.readers, localized, lookup, pointer);
            return;
        }
        if (text_.readers != kEnglish)
            return;
        for (const auto& [readers, delivered] : deliveries_)
            if (!delivered.hasLink(key, lookup))
                addReplaced(Fault::ReplacedItem, Loss::Nothing, readers,
                            index_.holderOf({readers, readers}, document.key, name), lookup,
                            pointer);
    }

    void addLost(const ResourceDocument& document, const std::string& name,
                 const std::string& pointer) {
        findings_.add(Fault::LostItem, Loss::Item,
                      countsInstead("the name",
                                    [&](const LookupKind& kind) {
                                        return index_.holderOf(kind, document.key, name);
                                    }) +
                          ": its lookups count",
                      pointer);
    }

    /// What a localized text has under a name takes the place of what English has.
    void addReplaced(Fault fault, Loss loss, const std::string& readers, const std::string* holder,
                     const RefItemLookup& lookup, const std::string& pointer) {
        findings_.add(
            fault, loss,
            fmt::format("readers of {} do not get it: {} has the name, but not the href {}",
                        readers, holder == nullptr ? "another leaf" : shortenedPath(*holder),
                        inQuotes(toUtf8(lookup.getHref()))),
            pointer);
    }

    const ResourceText& text_;
    const CheckIndex& index_;
    const Deliveries& deliveries_;
    FindingList& findings_;
};

} // namespace

void checkDelivery(const ResourceText& text, const json::value& resource, const CheckIndex& index,
                   const Deliveries& deliveries, FindingList& findings) {
    if (text.file.catalog != Catalog::Lookup)
        return;
    DeliveryCheck check(text, index, deliveries, findings);
    for (const ResourceDocument& document : documentsOf(resource))
        check.check(document);
}

} // namespace refdoc
