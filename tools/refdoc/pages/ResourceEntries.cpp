#include "refdoc/pages/ResourceEntries.hpp"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include "refdoc/pages/ItemJson.hpp"
#include "refdoc/pages/NameList.hpp"
#include "refdoc/pages/Page.hpp"
#include "refdoc/pages/ReferencePage.hpp"
#include "refdoc/terminal/Output.hpp"
#include "refdoc/terminal/Pager.hpp"
#include "refdoc/terminal/Terminal.hpp"
#include "refdoc/text/Json.hpp"
#include "reference/docparser/ParsingTools.hpp"

namespace refdoc {

namespace {

using namespace reference::docparser;

std::vector<ListedName> listedNames(const Selection& selection) {
    std::vector<ListedName> names;
    for (const RefItem* item : selection.items) {
        const std::u16string_view status = statusText(item->deprecationStatus);
        std::u16string purpose = item->refPurpose;
        if (!status.empty())
            purpose.append(u" (").append(status).append(u")");
        for (const RefEntity& entity : item->refEntities)
            names.push_back({entity.name, purpose});
        if (item->refEntities.empty())
            names.push_back({item->href, purpose});
    }
    return names;
}

std::string asJson(const std::vector<Selection>& selections, const std::u16string& resource) {
    boost::json::array documents;
    for (const Selection& selection : selections) {
        boost::json::array items;
        for (const RefItem* item : selection.items)
            items.emplace_back(toJson(*item));
        boost::json::object document{{"key", toJson(*selection.key)}};
        for (auto& member : toJson(*selection.header))
            document.emplace(member.key(), std::move(member.value()));
        document.emplace("items", std::move(items));
        documents.emplace_back(std::move(document));
    }
    return prettyJson(boost::json::object{
        {"resource", toJson(resource)},
        {"language", toJson(DocResourceParser::ParsingTools::getCurrentLocale())},
        {"documents", std::move(documents)}});
}

std::string asPages(const std::vector<Selection>& selections, const Terminal& terminal) {
    std::string text;
    for (const Selection& selection : selections) {
        for (const RefItem* item : selection.items) {
            Page page({terminal.width, terminal.styled});
            addReferencePage(page, *selection.header, *item);
            text += (text.empty() ? "" : "\n\n") + page.take();
        }
    }
    return text;
}

/// In a list for another program each name has one line, whatever its length.
std::string asLists(const std::vector<Selection>& selections, const Terminal& terminal) {
    const std::size_t width = terminal.interactive ? terminal.width : kUnlimitedWidth;
    Page page({width, terminal.styled});
    for (const Selection& selection : selections) {
        const std::u16string& product = selection.header->getProductName();
        addNameList(page, product.empty() ? *selection.key : product, listedNames(selection),
                    width);
    }
    return page.take();
}

bool isWanted(const RefItem& item, const EntryQuery& query) {
    return !query.name || item.href == *query.name || query.hrefs.contains(item.href) ||
           std::any_of(item.refEntities.begin(), item.refEntities.end(),
                       [&](const RefEntity& entity) { return entity.name == *query.name; });
}

std::vector<const RefItem*> wantedItems(const DocResource<RefItem>& document,
                                        const EntryQuery& query) {
    std::vector<const RefItem*> wanted;
    for (const auto& [href, items] : document.items)
        for (const RefItem& item : items)
            if (isWanted(item, query))
                wanted.push_back(&item);
    return wanted;
}

} // namespace

std::vector<Selection> select(const ResourceDocuments& documents, const EntryQuery& query) {
    std::vector<Selection> selections;
    for (const auto& [key, document] : documents) {
        if (query.products && !query.products->contains(key))
            continue;
        Selection selection{
            .key = &key, .header = &document.header, .items = wantedItems(document, query)};
        if (!selection.items.empty())
            selections.push_back(std::move(selection));
    }
    std::stable_partition(selections.begin(), selections.end(), [](const Selection& selection) {
        return *selection.key == selection.header->getHelpFolder();
    });
    return selections;
}

ExitCode showEntries(const std::vector<Selection>& selections, const std::u16string& resource,
                     EntryFormat format) {
    const Terminal terminal = standardOutputTerminal();
    if (format == EntryFormat::Json)
        writeOutput(asJson(selections, resource));
    else if (!selections.empty())
        showText(format == EntryFormat::Pages ? asPages(selections, terminal)
                                              : asLists(selections, terminal),
                 terminal);
    return selections.empty() ? ExitCode::NothingFound : ExitCode::Found;
}

} // namespace refdoc
