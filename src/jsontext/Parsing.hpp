#pragma once

#include <string_view>

#include <boost/json/storage_ptr.hpp>
#include <boost/json/value.hpp>
#include <boost/system/error_code.hpp>

#include "jsontext/MemberNames.hpp"

/// Parsing JSON texts from any author, who may be hostile.
namespace jsontext {

/// The value of a text, as `boost::json::parse` with its default options gives it, but without the
/// members whose names are not in `names`. Those must be JSON as well, but they are skipped with
/// all that they hold. So an object has no more members than there are names, and no author can
/// choose the names in a table that hashes them.
///
/// @param text UTF-8.
/// @param names the members that are kept.
/// @param storage the memory of the value.
/// @param failure why the text has no value, and null is returned: an error of Boost.JSON, or
///        `std::errc::value_too_large` for a text of more values than four million and one for each
///        8 bytes. A value takes 24 bytes, and twice that while its list is built, so a list of
///        digits would take 24 times its text; documents have a value for each 9 bytes at most.
/// @throws std::bad_alloc when memory runs out.
///
/// Linear in the text.
boost::json::value parse(std::string_view text, const MemberNames& names,
                         boost::json::storage_ptr storage, boost::system::error_code& failure);

/// The same; a text without a value throws `boost::system::system_error`.
boost::json::value parse(std::string_view text, const MemberNames& names,
                         boost::json::storage_ptr storage);

} // namespace jsontext
