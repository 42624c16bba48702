#include "refdoc/check/SchemaValidator.hpp"

#include <optional>
#include <string_view>
#include <utility>

#include <valijson/adapters/boost_json_adapter.hpp>
#include <valijson/schema.hpp>
#include <valijson/schema_parser.hpp>
#include <valijson/validation_results.hpp>
#include <valijson/validator.hpp>

#include "refdoc/format/JsonPositions.hpp"

namespace refdoc {

namespace {

using valijson::adapters::BoostJsonAdapter;
using Error = valijson::ValidationResults::Error;

std::string pointerOf(const Error& error) {
    std::string pointer;
    for (std::size_t i = 1; i < error.context.size(); ++i) // after the root; each in brackets
        pointer += pointerStep({error.context[i].data() + 1, error.context[i].size() - 2});
    return pointer;
}

/// Nothing for an error that only says in which part there is one.
std::optional<SchemaError> asSchemaError(const Error& error) {
    constexpr std::string_view missing = "Missing required property '";
    const std::string_view text = error.description;
    if (text.starts_with(missing)) {
        const std::string_view member = text.substr(missing.size());
        return SchemaError{SchemaError::Kind::MissingMember, pointerOf(error),
                           std::string(member.substr(0, member.rfind('\'')))};
    }
    if (text.starts_with("Value type not permitted"))
        return SchemaError{SchemaError::Kind::WrongKind, pointerOf(error), {}};
    if (text.starts_with("Failed to match against any enum values"))
        return SchemaError{SchemaError::Kind::UnknownText, pointerOf(error), {}};
    return std::nullopt;
}

} // namespace

class SchemaValidator::Schema : public valijson::Schema {};

SchemaValidator::SchemaValidator(const boost::json::value& schema) {
    auto parsed = std::make_unique<Schema>();
    valijson::SchemaParser(valijson::SchemaParser::kDraft7)
        .populateSchema(BoostJsonAdapter(schema), *parsed);
    schema_ = std::move(parsed);
}

SchemaValidator::~SchemaValidator() = default;

bool SchemaValidator::accepts(const boost::json::value& value) const {
    return valijson::Validator().validate(*schema_, BoostJsonAdapter(value), nullptr);
}

std::vector<SchemaError> SchemaValidator::errorsIn(const boost::json::value& value) const {
    valijson::ValidationResults results;
    const bool isSound =
        valijson::Validator().validate(*schema_, BoostJsonAdapter(value), &results);
    std::vector<SchemaError> errors;
    for (const Error& error : results)
        if (std::optional<SchemaError> told = asSchemaError(error))
            errors.push_back(std::move(*told));
    if (!isSound && errors.empty()) // said in words that are not known here
        errors.push_back({SchemaError::Kind::WrongKind, {}, {}});
    return errors;
}

} // namespace refdoc
