#include "refdoc/check/CheckDelivery.hpp"

#include <cstddef>
#include <string>
#include <string_view>
#include <tuple>

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
namespace parsing = reference::docparser::DocResourceParser::ParsingTools;

bool isSameHeader(const HeaderInfo& left, const HeaderInfo& right) {
    const auto textsOf = [](const HeaderInfo& header) {
        return std::tie(header.getProductName(), header.getBaseCode(), header.getHelpFolder(),
                        header.getHelpLocation());
    };
    return textsOf(left) == textsOf(right);
}

class DeliveryCheck {
public:
    DeliveryCheck(const ResourceText& text, std::uint32_t number, const CheckIndex& index,
                  const LookupFates& fates, FindingList& findings)
        : text_(text), number_(number), index_(index), fates_(fates), findings_(findings) {}

    void check(const ResourceDocument& document) {
        const HeaderInfo header = parsing::getHeaderInfo(*document.value);
        const auto& indexed = index_.lookups().documents().at(
            document.pointer.empty() ? header.getHelpFolder() : header.getBaseCode());
        checkHeader(document, indexed, header);
        const json::array& items = document.value->at("refItems").as_array();
        for (std::size_t i = 0; i < items.size(); ++i)
            if (const LookupFate* fate =
                    fates_.find(number_, indexed.key, static_cast<std::uint32_t>(i)))
                checkItem(document, *fate, items[i].as_object(),
                          fmt::format("{}/refItems/{}", document.pointer, i));
    }

private:
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

    void checkHeader(const ResourceDocument& document, const LookupIndex::Document& indexed,
                     const HeaderInfo& header) {
        const HeaderInfo* delivered = index_.lookups().headerFor(indexed, text_.readers);
        const bool isLocalized =
            fillsIn() && index_.holderOf(localizedKind(), document.key) != nullptr;
        if (!isLocalized && delivered != nullptr && !isSameHeader(*delivered, header))
            findings_.add(Fault::SharedKey, Loss::Nothing,
                          countsInstead(fmt::format("the document {}", inQuotes(document.key)),
                                        [&](const LookupKind& kind) {
                                            return index_.holderOf(kind, document.key);
                                        }) +
                              ": its header counts",
                          document.pointer);
    }

    void checkItem(const ResourceDocument& document, const LookupFate& fate,
                   const json::object& item, const std::string& pointer) {
        const std::string name(item.at("name").as_string());
        const std::string href =
            toUtf8(parsing::getFluString(item, "href", parsing::StringParsingType::Ascii));
        if (fate.isLost) {
            const std::string* localized =
                fillsIn() ? index_.holderOf(localizedKind(), document.key, name) : nullptr;
            if (localized == nullptr)
                addLost(document, name, pointer);
            else if (fate.isLinkLost)
                addReplaced(Fault::LostItem, Loss::Item, text_.readers, localized, href, pointer);
            return;
        }
        for (std::size_t i = 0; i < fates_.languages().size(); ++i) {
            const std::string& readers = fates_.languages()[i];
            if ((fate.linkLostFor >> i & 1) != 0)
                addReplaced(Fault::ReplacedItem, Loss::Nothing, readers,
                            index_.holderOf({readers, readers}, document.key, name), href, pointer);
        }
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
                     const std::string& href, const std::string& pointer) {
        findings_.add(
            fault, loss,
            fmt::format("readers of {} do not get it: {} has the name, but not the href {}",
                        readers, holder == nullptr ? "another leaf" : shortenedPath(*holder),
                        inQuotes(href)),
            pointer);
    }

    const ResourceText& text_;
    std::uint32_t number_;
    const CheckIndex& index_;
    const LookupFates& fates_;
    FindingList& findings_;
};

} // namespace

void checkDelivery(const ResourceText& text, std::uint32_t number, const json::value& resource,
                   const CheckIndex& index, const LookupFates& fates, FindingList& findings) {
    DeliveryCheck check(text, number, index, fates, findings);
    for (const ResourceDocument& document : documentsOf(resource))
        check.check(document);
}

} // namespace refdoc
