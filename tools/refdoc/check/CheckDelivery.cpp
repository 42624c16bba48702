#include "refdoc/check/CheckDelivery.hpp"

#include <cstddef>
#include <string_view>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <fmt/format.h>

#include "refdoc/Text.hpp"
#include "refdoc/check/CheckNames.hpp"
#include "refdoc/check/CheckText.hpp"
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
        if (isForOwnReaders())
            checkHeader(document, key, header);
        const json::array& items = document.value->at("refItems").as_array();
        for (std::size_t i = 0; i < items.size(); ++i)
            checkItem(document, key, lookupOf(items[i].as_object()),
                      fmt::format("{}/refItems/{}", document.pointer, i));
    }

private:
    /// English texts in a package of one language only fill in for its readers.
    bool isForOwnReaders() const { return text_.language == text_.readers; }

    /// Of English texts the first counts, of localized ones the last.
    std::string countsInstead(const std::string* holder, std::string_view what) const {
        const bool isKnown = holder != nullptr && *holder != text_.shownName();
        return fmt::format("{} has {} too and is read {}", isKnown ? *holder : "another leaf", what,
                           text_.language == kEnglish ? "before" : "after");
    }

    void checkHeader(const ResourceDocument& document, const std::u16string& key,
                     const HeaderInfo& header) {
        const HeaderInfo* delivered = deliveries_.at(text_.readers).header(key);
        if (delivered != nullptr && equals(*delivered, header))
            return;
        const std::string what = fmt::format("the document {}", inQuotes(document.key));
        findings_.add(Fault::SharedKey, Loss::Nothing,
                      countsInstead(index_.holderOf(text_.language, document.key), what) +
                          ": its header counts",
                      document.pointer);
    }

    void checkItem(const ResourceDocument& document, const std::u16string& key,
                   const RefItemLookup& lookup, const std::string& pointer) {
        if (isForOwnReaders() && !deliveries_.at(text_.readers).has(key, lookup))
            return addLost(document, lookup, pointer);
        if (text_.language != kEnglish)
            return;
        for (const auto& [readers, delivered] : deliveries_)
            if (readers != kEnglish && isReadBy(readers) && !delivered.hasLink(key, lookup))
                addReplaced(document, lookup, readers, pointer);
    }

    bool isReadBy(const std::string& readers) const {
        return text_.readers == kEnglish || text_.readers == readers;
    }

    void addLost(const ResourceDocument& document, const RefItemLookup& lookup,
                 const std::string& pointer) {
        const std::string name = toUtf8(lookup.getName());
        const std::string* holder = index_.holderOf(text_.language, document.key, name);
        findings_.add(Fault::LostItem, Loss::Item,
                      countsInstead(holder, "the name") + ": its lookups count", pointer);
    }

    /// A localized text takes the place of what English has under a name.
    void addReplaced(const ResourceDocument& document, const RefItemLookup& lookup,
                     const std::string& readers, const std::string& pointer) {
        const std::string* holder =
            index_.holderOf(readers, document.key, toUtf8(lookup.getName()));
        findings_.add(
            Fault::LostItem, Loss::Nothing,
            fmt::format("readers of {} do not get it: {} has the name, but not the href {}",
                        readers, holder == nullptr ? "another leaf" : *holder,
                        inQuotes(toUtf8(lookup.getHref()))),
            pointer, Level::Warning);
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
