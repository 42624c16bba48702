#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/value.hpp>

#include "environment/ReferenceProperty.hpp"
#include "reference/docparser/Export.hpp"

/// The tools with which the library reads resource documents, for callers that hold the same
/// documents. All of them keep nothing between calls, lock nothing and may be called from any
/// thread; they only read the document.
namespace reference::docparser::DocResourceParser::ParsingTools {

/// "en", the code of English.
extern DOCPARSER_API const std::u16string kEnglishLocale;
/// "json", the extension of resource files.
extern DOCPARSER_API const std::u16string kJsonExt;
/// "zip", the extension of packages.
extern DOCPARSER_API const std::u16string kZipExt;
/// ".json", the extension of resource files with its dot.
extern DOCPARSER_API const std::u16string kDotJsonExt;
/// ".zip", the extension of packages with its dot.
extern DOCPARSER_API const std::u16string kDotZipExt;
/// '_', between a resource name and a language code. Valid before load-time initialisers run.
extern DOCPARSER_API const char16_t kLocaleSeparator;

/// How the bytes of a JSON string become UTF-16. Any value other than `Ascii` acts as `Utf8`.
enum class StringParsingType : std::int32_t {
    Ascii = 0, ///< one code unit of the same value per byte, whatever the bytes
    Utf8 = 1,  ///< decoded as UTF-8; malformed input becomes one U+FFFD per maximal subpart
};

/// The text of a JSON string.
///
/// @throws DocParserException when `value` is not a string; what a conversion throws
///         (`std::bad_alloc`, `std::length_error` for 2 GiB and more) passes through.
/// @par Complexity
/// Linear in the text. Plain 7-bit text costs one scan and one widening copy.
DOCPARSER_API std::u16string getFluString(const boost::json::value& value, StringParsingType type);

/// The text of the member `key` (UTF-8, compared byte for byte).
///
/// @throws DocParserException when there is no such member or it is not a string;
///         conversions as above.
DOCPARSER_API std::u16string getFluString(const boost::json::object& object, const std::string& key,
                                          StringParsingType type);

/// The text of the member `key`, or an empty text when there is no such member.
///
/// @throws DocParserException when the member is there but not a string (null included);
///         conversions as above.
DOCPARSER_API std::u16string getFluStringWithFallback(const boost::json::object& object,
                                                      const std::string& key,
                                                      StringParsingType type);

/// `value` as an array: a reference into the caller's document, not a copy.
///
/// @throws DocParserException when it is not an array.
DOCPARSER_API const boost::json::array& getJsonArray(const boost::json::value& value);

/// The member `key` of the object `value` as an array: a reference into the caller's document.
///
/// @throws DocParserException when `value` is not an object, has no such member, or the member is
///         not an array.
DOCPARSER_API const boost::json::array& getJsonArray(const boost::json::value& value,
                                                     const std::string& key);

/// Reads the header of a resource document or of one of its support-package documents: the string
/// members "productName" (decoded as UTF-8), "baseCode", "helpFolder" and "helpLocation" (one code
/// unit per byte, meant for 7-bit text). All four are required and may be empty; other members are
/// ignored.
///
/// @throws DocParserException when `document` is not an object, or a member is missing or not a
///         string; conversions as for `getFluString`.
DOCPARSER_API reference::property::HeaderInfo getHeaderInfo(const boost::json::value& document);

/// The file-name suffixes of localized resource files: for each supported documentation language
/// other than exactly "en", in the language service's order, `kLocaleSeparator` and its code.
///
/// Asks the service anew at each call; what it throws passes through.
DOCPARSER_API std::vector<std::u16string> getSupportedDocLocales();

/// The code of the current documentation language, without a separator; "en" for English.
///
/// Asks the service anew at each call; what it throws passes through.
DOCPARSER_API std::u16string getCurrentLocale();

} // namespace reference::docparser::DocResourceParser::ParsingTools
