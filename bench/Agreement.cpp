#include "Agreement.hpp"

#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include "Loads.hpp"
#include "support/RefItemDescription.hpp"

namespace bench {

namespace {

namespace json = boost::json;

json::object describe(const property::RefItemLookup& lookup) {
    return {{"name", testsupport::describe(lookup.getName())},
            {"type", lookup.getEntityType().toString()},
            {"refpurpose", testsupport::describe(lookup.getPurpose())},
            {"deprecated", lookup.isDeprecated()},
            {"href", testsupport::describe(lookup.getHref())},
            {"fcntype", lookup.getFunctionType().toString()}};
}

json::object describe(const docparser::RefItem& item) {
    return testsupport::describe(item);
}

json::object describe(const property::HeaderInfo& header) {
    return {{"productName", testsupport::describe(header.getProductName())},
            {"baseCode", testsupport::describe(header.getBaseCode())},
            {"helpFolder", testsupport::describe(header.getHelpFolder())},
            {"helpLocation", testsupport::describe(header.getHelpLocation())}};
}

template <typename Record>
json::object describe(const docparser::DocResource<Record>& document) {
    json::object description = describe(document.header);
    for (const auto& [name, records] : document.items) {
        json::array& list = description.emplace(testsupport::describe(name), json::array())
                                .first->value()
                                .as_array();
        for (const Record& record : records)
            list.push_back(describe(record));
    }
    return description;
}

/// All documents of a load by their keys, those of installed products and the others in one map.
template <typename Documents>
std::map<std::u16string, json::object> describe(const std::vector<Documents>& all) {
    std::map<std::u16string, json::object> descriptions;
    for (const Documents& documents : all)
        for (const auto& [key, document] : documents)
            if (!descriptions.emplace(key, describe(document)).second)
                throw std::runtime_error("two documents of one key, which readers do not merge");
    return descriptions;
}

void requireSameWhenPacked(const std::filesystem::path& corpora) {
    const auto plain = describe(prepare(corpora, {"lookup", "plain", "library"}).run().lookups);
    for (const char* packed : {"packages", "one_package"})
        if (describe(prepare(corpora, {"lookup", packed, "library"}).run().lookups) != plain)
            throw std::runtime_error(std::string(packed) + " gives other records than plain files");
}

void requireSameRecords(const std::filesystem::path& corpora, Load load,
                        const std::vector<std::string>& readers) {
    const Loaded expected = prepare(corpora, load).run();
    for (const std::string& reader : readers) {
        if (reader == "library" || reader == "parse")
            continue;
        load.reader = reader;
        const Loaded actual = prepare(corpora, load).run();
        if (describe(actual.lookups) != describe(expected.lookups) ||
            describe(actual.refItems) != describe(expected.refItems))
            throw std::runtime_error(
                reader + " reads other records than the library: " + load.kind + " " + load.corpus);
    }
    if (expected.countRecords() == 0)
        throw std::runtime_error("no records at all: " + load.kind + " " + load.corpus);
}

} // namespace

void requireAgreement(const std::filesystem::path& corpora) {
    requireSameRecords(corpora, {"lookup", "plain", "library"}, kReaders);
    requireSameRecords(corpora, {"lookup", "small_files", "library"}, {"program", "yardstick"});
    requireSameRecords(corpora, {"reference", "all", "library"}, kReaders);
    requireSameWhenPacked(corpora);
}

} // namespace bench
