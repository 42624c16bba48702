#pragma once

#include <string_view>

#include <boost/json/object.hpp>

namespace fuzz {

/// The members by which the items of the two kinds of file are grouped.
inline constexpr std::string_view kLookupKey = "name";
inline constexpr std::string_view kReferenceKey = "href";

/// Requires that `written`, the document that records were written back to, says what the document
/// `original` says in the members that count, item by item. The items of a
/// group keep their order, the groups need not.
void requireAgreement(const boost::json::object& written, const boost::json::object& original,
                      std::string_view itemKey);

} // namespace fuzz
