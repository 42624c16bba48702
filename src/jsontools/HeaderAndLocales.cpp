#include "reference/docparser/ParsingTools.hpp"

#include <string>
#include <utility>
#include <vector>

#include "environment/DocLanguage.hpp"
#include "jsontools/JsonAccess.hpp"
#include "settings/MemberNames.hpp"

namespace reference::docparser::DocResourceParser::ParsingTools {

reference::property::HeaderInfo getHeaderInfo(const boost::json::value& document) {
    const boost::json::object& object = getJsonObject(document);
    std::u16string productName =
        getFluString(object, member::kProductName, StringParsingType::Utf8);
    std::u16string baseCode = getFluString(object, member::kBaseCode, StringParsingType::Ascii);
    std::u16string helpFolder = getFluString(object, member::kHelpFolder, StringParsingType::Ascii);
    std::u16string helpLocation =
        getFluString(object, member::kHelpLocation, StringParsingType::Ascii);
    return {std::move(productName), std::move(baseCode), std::move(helpFolder),
            std::move(helpLocation)};
}

std::vector<std::u16string> getSupportedDocLocales() {
    auto locales = doclanguage::DocLanguage::getInstance().getSupportedDocLanguages();
    std::erase(locales, kEnglishLocale);
    for (std::u16string& locale : locales)
        locale.insert(locale.begin(), kLocaleSeparator);
    return locales;
}

std::u16string getCurrentLocale() {
    return doclanguage::DocLanguage::getInstance().getDocLanguage();
}

} // namespace reference::docparser::DocResourceParser::ParsingTools
