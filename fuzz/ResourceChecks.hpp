#pragma once

#include <optional>
#include <string>

#include <boost/json/object.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>
#include <boost/system/error_code.hpp>
#include <boost/system/system_error.hpp>

#include "Support.hpp"
#include "reference/docparser/DocParserException.hpp"
#include "resources/ReferenceResource.hpp"
#include "support/RefItemDescription.hpp"
#include "support/ResourceModel.hpp"

namespace fuzz {

/// Requires that of any text is read what its format says, and that no JSON is told from JSON that
/// breaks the format; what else is thrown leaves, and ends the process.
template <typename T>
void checkResource(const std::string& text) {
    namespace docparser = reference::docparser;
    boost::system::error_code failure;
    const boost::json::value parsed = boost::json::parse(text, failure);
    std::optional<boost::json::object> expected;
    if (!failure)
        expected = testsupport::expectedResource<T>(parsed);
    try {
        const auto resource = docparser::parseReferenceResource<T>(text);
        require(expected && testsupport::describe(resource) == *expected,
                "what is read is what stands there");
    } catch (const boost::system::system_error&) {
        require(failure.failed(), "JSON is read");
    } catch (const docparser::DocParserException&) {
        require(!failure && !expected, "only JSON that breaks the format is refused");
    }
}

} // namespace fuzz
