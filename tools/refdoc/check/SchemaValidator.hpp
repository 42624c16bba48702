#pragma once

#include <memory>
#include <string>
#include <vector>

#include <boost/json/value.hpp>

namespace refdoc {

/// How a value breaks a schema.
struct SchemaError {
    enum class Kind { MissingMember, WrongKind, UnknownText };

    Kind kind;
    std::string pointer; ///< to the value; the object's for a missing member
    std::string member;  ///< the missing one
};

/// Validates JSON values against a JSON Schema of draft 7. Only what `SchemaError` can say is told,
/// so a schema must not restrict values in other ways.
class SchemaValidator {
public:
    /// @throws std::runtime_error for what is no schema.
    explicit SchemaValidator(const boost::json::value& schema);
    ~SchemaValidator();

    /// Stops at the first error.
    bool accepts(const boost::json::value& value) const;

    /// Takes memory for each value that is wrong.
    std::vector<SchemaError> errorsIn(const boost::json::value& value) const;

private:
    class Schema;
    std::unique_ptr<const Schema> schema_;
};

} // namespace refdoc
