// Parses an input as a resource file: the result must be what the model of the format says, and the
// exception must say whether the text is not JSON or breaks the format. Any other exception ends
// the process.

#include <optional>
#include <string>

#include <boost/json/object.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>
#include <boost/system/error_code.hpp>
#include <boost/system/system_error.hpp>

#include "Support.hpp"
#include "environment/ReferenceProperty.hpp"
#include "jsontext/Parsing.hpp"
#include "reference/docparser/DocParserException.hpp"
#include "reference/docparser/RefItem.hpp"
#include "resources/ReferenceResource.hpp"
#include "settings/MemberNames.hpp"
#include "support/RefItemDescription.hpp"
#include "support/ResourceModel.hpp"

namespace docparser = reference::docparser;
using docparser::RefItem;
using reference::property::RefItemLookup;

namespace {

/// No author of a text may fill the hash tables of its objects.
void requireKnownNames(const boost::json::value& value) {
    if (const boost::json::object* object = value.if_object())
        for (const auto& [name, member] : *object) {
            fuzz::require(docparser::member::kAllNames.contains(name),
                          "only known members are kept");
            requireKnownNames(member);
        }
    if (const boost::json::array* list = value.if_array())
        for (const boost::json::value& element : *list)
            requireKnownNames(element);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(fuzz::textOf(data, size));
    boost::system::error_code failure;
    const boost::json::value parsed = boost::json::parse(text, failure);
    std::optional<boost::json::object> expected;
    if (!failure)
        expected = testsupport::expectedResource<DOCPARSER_FUZZED_ITEM>(parsed);
    try {
        const auto resource = docparser::parseReferenceResource<DOCPARSER_FUZZED_ITEM>(text);
        fuzz::require(expected && testsupport::describe(resource) == *expected,
                      "the records are those of the model");
    } catch (const boost::system::system_error&) {
        fuzz::require(failure.failed(), "JSON is read");
        return 0;
    } catch (const docparser::DocParserException&) {
        fuzz::require(!failure && !expected, "only JSON that breaks the format is refused");
    }
    if (!failure)
        requireKnownNames(jsontext::parse(text, docparser::member::kAllNames, {}));
    return 0;
}
