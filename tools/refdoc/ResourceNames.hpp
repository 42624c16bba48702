#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace refdoc {

inline constexpr std::string_view kEnglish = "en";

/// What the stem of a resource file's name says.
struct NameLanguage {
    std::string resource;
    std::string language;
};

/// English unless the stem ends with "_" and the code of another supported language.
NameLanguage languageOfStem(const std::string& stem);

/// The language that the author may have meant with a stem that is English by the rules.
std::optional<NameLanguage> unknownLanguage(const std::string& stem);

/// Whether only letter case keeps the name from being that of a resource file.
bool isResourceNameButForCase(const std::u16string& name);

} // namespace refdoc
