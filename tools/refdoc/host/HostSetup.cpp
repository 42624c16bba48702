#include "refdoc/host/HostSetup.hpp"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include <boost/log/expressions/message.hpp>
#include <boost/log/utility/formatting_ostream.hpp>
#include <boost/log/utility/setup/console.hpp>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include "environment/Diagnostics.hpp"
#include "environment/Services.hpp"
#include "refdoc/text/Text.hpp"
#include "reference/docparser/ParsingTools.hpp"

namespace refdoc {

namespace {

namespace parsing = reference::docparser::DocResourceParser::ParsingTools;

void formatRecord(const boost::log::record_view& record, boost::log::formatting_ostream& stream) {
    const auto message = boost::log::extract<std::string>("Message", record);
    stream << "refdoc: " << (message ? printableUtf8(*message) : std::string());
}

void logToStandardError(bool verbose) {
    boost::log::add_console_log(std::cerr, boost::log::keywords::format = &formatRecord,
                                boost::log::keywords::auto_flush = true);
    const std::uint32_t detail = verbose ? foundation::log::kSeverityDetail : 0;
    foundation::log::setEnabledSeverities("referenceApi::docparser",
                                          foundation::log::kSeverityProblem | detail);
}

std::u16string documentationRoot(const std::string& folder) {
    std::u16string root = fromUtf8(folder);
    while (root.size() > 1 && root.ends_with(u'/'))
        root.pop_back();
    std::error_code ignored;
    if (!std::filesystem::is_directory(toUtf8(root), ignored))
        throw UsageError(
            fmt::format("\"{}\" is not a folder, as a documentation root must be", folder));
    return root;
}

std::u16string documentationLanguage(const std::string& code) {
    const std::vector<std::string> languages = supportedLanguages();
    if (std::find(languages.begin(), languages.end(), code) == languages.end())
        throw UsageError(
            fmt::format("--language: \"{}\" is not a supported language; the languages are {}",
                        code, fmt::join(languages, ", ")));
    return fromUtf8(code);
}

environment::Services hostServices(const GlobalOptions& options) {
    environment::Services services;
    if (options.root)
        services.docDataRoot = [root = documentationRoot(*options.root)] { return root; };
    if (options.language)
        services.docLanguage = [code = documentationLanguage(*options.language)] { return code; };
    return services;
}

} // namespace

std::vector<std::string> supportedLanguages() {
    std::vector<std::string> languages{toUtf8(parsing::kEnglishLocale)};
    for (std::u16string suffix : parsing::getSupportedDocLocales()) {
        if (suffix.starts_with(parsing::kLocaleSeparator))
            suffix.erase(0, 1);
        languages.push_back(toUtf8(suffix));
    }
    return languages;
}

void setUpHost(const GlobalOptions& options) {
    logToStandardError(options.verbose);
    environment::setServices(hostServices(options));
}

} // namespace refdoc
