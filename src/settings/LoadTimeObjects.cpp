// All objects with a load-time construction, in the one order in which they are built; unloading
// destroys them in the reverse order. They stand in a single translation unit because only that
// fixes the order.

#include <memory>
#include <mutex>
#include <string>

#include "environment/PathAndText.hpp"
#include "reference/docparser/ParsingTools.hpp"
#include "settings/Constants.hpp"
#include "settings/DiagnosticLog.hpp"
#include "settings/MemberNames.hpp"
#include "settings/ProcessState.hpp"

namespace reference::docparser::member {

const std::string kAlt = "alt";
const std::string kAppThumbnail = "appthumbnail";
const std::string kBaseCode = "baseCode";
const std::string kClassProperty = "classproperty";
const std::string kClassPropertyGroup = "classpropertygroup";
const std::string kDefaultValue = "defaultvalue";
const std::string kDeprecated = "deprecated";
const std::string kDeprecationStatus = "deprecationstatus";
const std::string kDescription = "description";
const std::string kExamples = "examples";
const std::string kFcnType = "fcntype";
const std::string kFileRef = "fileref";
const std::string kHelpFolder = "helpFolder";
const std::string kHelpLocation = "helpLocation";
const std::string kHref = "href";
const std::string kHtmlId = "htmlid";
const std::string kInputGroup = "inputgroup";
const std::string kInputs = "inputs";
const std::string kIntroduced = "introduced";
const std::string kName = "name";
const std::string kNameValuePairs = "namevaluepairs";
const std::string kOpenCommand = "open_command";
const std::string kOutputs = "outputs";
const std::string kPackageName = "packagename";
const std::string kParameters = "parameters";
const std::string kProductName = "productName";
const std::string kPurpose = "purpose";
const std::string kSeeAlso = "seealso";
const std::string kSupportPackages = "supportPackages";
const std::string kSyntax = "syntax";
const std::string kSyntaxGroup = "syntaxgroup";
const std::string kSyntaxType = "syntaxtype";
const std::string kRefEntity = "refentity";
const std::string kRefItems = "refItems";
const std::string kRefPurpose = "refpurpose";
const std::string kTitle = "title";
const std::string kType = "type";
const std::string kUrl = "url";
const std::string kValue = "value";

} // namespace reference::docparser::member

namespace reference::docparser {

foundation::log::basic_diagnostic_logger<char> docParserLogger("referenceApi::docparser");

std::mutex topLevelProductsMutex;
TopLevelProductsProvider topLevelProductsProvider = defaultTopLevelProductsProvider;

std::mutex supportPackageCacheMutex;
SupportPackageSet supportPackageCache;

const fl::i18n::codecvt_ascii_to_ustring asciiConverter;
const fl::i18n::codecvt_string_to_ustring utf8Converter("utf8", true);

const std::u16string kHashSign = u"#";
const std::u16string kDot = u".";
const std::u16string kPathSeparator = fl::filesystem::upath_constant::PATHNAME_SEPARATOR;
const std::u16string kReferenceApiLookupCatalog =
    u"docCatalog" + kPathSeparator + u"referenceapi_lookup";
const std::u16string kReferenceApiCatalog = u"docCatalog" + kPathSeparator + u"referenceapi";

std::mutex referenceRootsMutex;
std::shared_ptr<const DocResourceParser::ReferenceRoots> currentReferenceRoots;

} // namespace reference::docparser

namespace reference::docparser::DocResourceParser::ParsingTools {

const std::u16string kEnglishLocale = u"en";
const std::u16string kJsonExt = u"json";
const std::u16string kZipExt = u"zip";
const std::u16string kDotJsonExt = kDot + kJsonExt;
const std::u16string kDotZipExt = kDot + kZipExt;
constinit const char16_t kLocaleSeparator = u'_';

} // namespace reference::docparser::DocResourceParser::ParsingTools
