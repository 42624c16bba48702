#pragma once

#include <memory>
#include <string>
#include <string_view>

#include <boost/json/value.hpp>

#include "refdoc/check/CheckFinding.hpp"

namespace refdoc {

/// The format of one kind of resource file: which values must be there, and of which kinds.
class CheckSchema {
public:
    /// @param schema the text of a JSON Schema whose definitions "document" and "item" are those of
    ///        a document and of an element of its `refItems`.
    explicit CheckSchema(std::string_view schema);
    ~CheckSchema();

    /// Adds all that breaks the format. Whatever does, unknown texts of enumerations excepted,
    /// costs the whole text. Takes linear time, and memory for the findings of one item.
    void check(const boost::json::value& resource, FindingList& findings) const;

    /// The schema itself, valid as long as this object.
    const boost::json::value& schema() const;

private:
    class Validation;
    std::unique_ptr<const Validation> validation_;
};

/// The formats of lookup files and of full reference files.
const CheckSchema& lookupSchema();
const CheckSchema& referenceSchema();

/// "a number", "a text" and the like.
std::string_view kindName(const boost::json::value& value);

} // namespace refdoc
