// Prints what the installed library reads from the root that is given as the first argument, with
// services of this program's own.

#include <iostream>
#include <string>

#include "environment/PathAndText.hpp"
#include "environment/Services.hpp"
#include "reference/docparser/DocParserException.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "reference/docparser/ParsingTools.hpp"

namespace parser = reference::docparser::DocResourceParser;

namespace {

bool isCaughtAcrossLibraries() {
    try {
        parser::ParsingTools::getFluString(boost::json::value(1),
                                           parser::ParsingTools::StringParsingType::Utf8);
    } catch (const foundation::core::except::IException&) {
        return true;
    }
    return false;
}

} // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount != 2 || !isCaughtAcrossLibraries())
        return 2;
    const std::string root = arguments[1];
    environment::Services services;
    services.docDataRoot = [&root] { return std::u16string(root.begin(), root.end()); };
    services.docLanguage = [] { return std::u16string(u"en"); };
    environment::setServices(services);

    for (const auto& [key, document] : parser::getResourceFile(u"alpha"))
        for (const auto& [href, items] : document.items)
            std::cout << fl::i18n::to_string(key) << ": " << fl::i18n::to_string(href) << ": "
                      << fl::i18n::to_string(items.front().refPurpose) << '\n';
    environment::resetServices();
}
