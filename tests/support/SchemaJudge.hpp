#pragma once

#include <memory>
#include <string_view>

#include <boost/json/value.hpp>

namespace testsupport {

/// A JSON Schema validator that the project did not write, to judge what the client makes of the
/// schemas.
class SchemaJudge {
public:
    /// @param schema a JSON Schema of draft 7.
    explicit SchemaJudge(std::string_view schema);
    ~SchemaJudge();

    bool accepts(const boost::json::value& document) const;

private:
    class Schema;
    std::unique_ptr<const Schema> schema_;
};

} // namespace testsupport
