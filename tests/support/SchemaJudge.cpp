#include "support/SchemaJudge.hpp"

#include <utility>

#include <boost/json/parse.hpp>
#include <valijson/adapters/boost_json_adapter.hpp>
#include <valijson/schema.hpp>
#include <valijson/schema_parser.hpp>
#include <valijson/validator.hpp>

namespace testsupport {

using valijson::adapters::BoostJsonAdapter;

class SchemaJudge::Schema : public valijson::Schema {};

SchemaJudge::SchemaJudge(std::string_view schema) {
    const boost::json::value document = boost::json::parse({schema.data(), schema.size()});
    auto parsed = std::make_unique<Schema>();
    valijson::SchemaParser(valijson::SchemaParser::kDraft7)
        .populateSchema(BoostJsonAdapter(document), *parsed);
    schema_ = std::move(parsed);
}

SchemaJudge::~SchemaJudge() = default;

bool SchemaJudge::accepts(const boost::json::value& document) const {
    return valijson::Validator().validate(*schema_, BoostJsonAdapter(document), nullptr);
}

} // namespace testsupport
