// All objects with a load-time construction, in the one order in which they are built. They stand
// in a single translation unit because only that fixes the order.
//
// The library stays loaded to the end of the process, and its functions work until then: for
// destructors of a program's own static objects, and for threads that go on while the process ends.
// So nothing here is ever destroyed: the names are references to objects that are never freed. Only
// the exported texts are objects themselves. They are so short that they need no memory of their
// own, and the destructors of both libstdc++ and libc++ leave such a text as it was.

#include <memory>
#include <mutex>
#include <string>

#include "environment/PathAndText.hpp"
#include "jsontext/MemberNames.hpp"
#include "reference/docparser/ParsingTools.hpp"
#include "settings/Constants.hpp"
#include "settings/DiagnosticLog.hpp"
#include "settings/MemberNames.hpp"
#include "settings/ProcessState.hpp"
#include "settings/SupportPackageCache.hpp"

namespace reference::docparser::member {
namespace {

jsontext::MemberNames& names() {
    static auto& names = *new jsontext::MemberNames();
    return names;
}

const std::string& addName(const char* name) {
    return names().add(name);
}

} // namespace

const std::string& kAlt = addName("alt");
const std::string& kAppThumbnail = addName("appthumbnail");
const std::string& kBaseCode = addName("baseCode");
const std::string& kClassProperty = addName("classproperty");
const std::string& kClassPropertyGroup = addName("classpropertygroup");
const std::string& kDefaultValue = addName("defaultvalue");
const std::string& kDeprecated = addName("deprecated");
const std::string& kDeprecationStatus = addName("deprecationstatus");
const std::string& kDescription = addName("description");
const std::string& kExamples = addName("examples");
const std::string& kFcnType = addName("fcntype");
const std::string& kFileRef = addName("fileref");
const std::string& kHelpFolder = addName("helpFolder");
const std::string& kHelpLocation = addName("helpLocation");
const std::string& kHref = addName("href");
const std::string& kHtmlId = addName("htmlid");
const std::string& kInputGroup = addName("inputgroup");
const std::string& kInputs = addName("inputs");
const std::string& kIntroduced = addName("introduced");
const std::string& kName = addName("name");
const std::string& kNameValuePairs = addName("namevaluepairs");
const std::string& kOpenCommand = addName("open_command");
const std::string& kOutputs = addName("outputs");
const std::string& kPackageName = addName("packagename");
const std::string& kParameters = addName("parameters");
const std::string& kProductName = addName("productName");
const std::string& kPurpose = addName("purpose");
const std::string& kSeeAlso = addName("seealso");
const std::string& kSupportPackages = addName("supportPackages");
const std::string& kSyntax = addName("syntax");
const std::string& kSyntaxGroup = addName("syntaxgroup");
const std::string& kSyntaxType = addName("syntaxtype");
const std::string& kRefEntity = addName("refentity");
const std::string& kRefItems = addName("refItems");
const std::string& kRefPurpose = addName("refpurpose");
const std::string& kTitle = addName("title");
const std::string& kType = addName("type");
const std::string& kUrl = addName("url");
const std::string& kValue = addName("value");

const jsontext::MemberNames& kAllNames = names();

} // namespace reference::docparser::member

namespace reference::docparser {

foundation::log::basic_diagnostic_logger<char>& docParserLogger =
    *new foundation::log::basic_diagnostic_logger<char>("referenceApi::docparser");

std::mutex& topLevelProductsMutex = *new std::mutex();
TopLevelProductsProvider& topLevelProductsProvider =
    *new TopLevelProductsProvider(defaultTopLevelProductsProvider);

SupportPackageCache& supportPackageCache = *new SupportPackageCache();

const fl::i18n::codecvt_ascii_to_ustring& asciiConverter =
    *new fl::i18n::codecvt_ascii_to_ustring();
const fl::i18n::codecvt_string_to_ustring& utf8Converter =
    *new fl::i18n::codecvt_string_to_ustring("utf8", true);

const std::u16string& kHashSign = *new std::u16string(u"#");
const std::u16string& kDot = *new std::u16string(u".");
const std::u16string& kPathSeparator =
    *new std::u16string(fl::filesystem::upath_constant::PATHNAME_SEPARATOR);
const std::u16string& kReferenceApiLookupCatalog =
    *new std::u16string(u"docCatalog" + kPathSeparator + u"referenceapi_lookup");
const std::u16string& kReferenceApiCatalog =
    *new std::u16string(u"docCatalog" + kPathSeparator + u"referenceapi");

std::mutex& referenceRootsMutex = *new std::mutex();
RootsSnapshot& currentReferenceRoots = *new RootsSnapshot();

} // namespace reference::docparser

namespace reference::docparser::DocResourceParser::ParsingTools {

const std::u16string kEnglishLocale = u"en";
const std::u16string kJsonExt = u"json";
const std::u16string kZipExt = u"zip";
const std::u16string kDotJsonExt = kDot + kJsonExt;
const std::u16string kDotZipExt = kDot + kZipExt;
constinit const char16_t kLocaleSeparator = u'_';

} // namespace reference::docparser::DocResourceParser::ParsingTools
