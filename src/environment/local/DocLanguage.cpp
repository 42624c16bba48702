#include "environment/DocLanguage.hpp"

#include <algorithm>
#include <array>
#include <clocale>
#include <cstdlib>
#include <string_view>

#include "environment/local/BuiltInServices.hpp"
#include "environment/local/CurrentServices.hpp"

namespace environment::local {

namespace {

constexpr std::array<std::string_view, 27> kSupportedLanguages{
    "en", "cs", "da", "de",    "el", "es", "fi", "fr", "hu", "id", "it", "ja",    "ko",   "mk",
    "nb", "nl", "pl", "pt_BR", "ro", "ru", "sr", "sv", "tr", "uk", "vi", "zh_CN", "zh_TW"};

std::string textOf(const char* text) {
    return text == nullptr ? std::string() : text;
}

std::string localeOfEnvironmentVariables() {
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        std::string locale = textOf(std::getenv(variable));
        if (!locale.empty())
            return locale;
    }
    return {};
}

/// Whether `locale`, language[_territory][.codeset][@modifier], belongs to `language`, which names
/// either its language and territory or its language alone.
bool isLocaleOf(std::string_view locale, std::string_view language) {
    const std::string_view named = locale.substr(0, locale.find_first_of(".@"));
    return named == language || named.substr(0, named.find('_')) == language;
}

std::u16string widened(std::string_view text) {
    return {text.begin(), text.end()};
}

} // namespace

std::vector<std::u16string> translatedManualLanguages() {
    std::vector<std::u16string> languages(kSupportedLanguages.size());
    std::transform(kSupportedLanguages.begin(), kSupportedLanguages.end(), languages.begin(),
                   widened);
    return languages;
}

std::string messageLocale() {
    std::string locale = textOf(std::setlocale(LC_MESSAGES, nullptr));
    return locale == "C" || locale == "POSIX" ? std::string() : locale;
}

std::u16string languageOfLocale(const std::string& locale) {
    const std::string named = locale.empty() ? localeOfEnvironmentVariables() : locale;
    const auto language =
        std::find_if(kSupportedLanguages.begin(), kSupportedLanguages.end(),
                     [&](std::string_view candidate) { return isLocaleOf(named, candidate); });
    return widened(language == kSupportedLanguages.end() ? "en" : *language);
}

} // namespace environment::local

namespace doclanguage {

const DocLanguage& DocLanguage::getInstance() {
    static const DocLanguage instance;
    return instance;
}

std::vector<std::u16string> DocLanguage::getSupportedDocLanguages() const {
    return environment::local::currentServices()->supportedDocLanguages();
}

std::u16string DocLanguage::getDocLanguage() const {
    return environment::local::currentServices()->docLanguage();
}

} // namespace doclanguage
