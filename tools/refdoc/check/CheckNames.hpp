#pragma once

#include <set>
#include <string>
#include <string_view>

#include "refdoc/check/CheckFinding.hpp"

namespace refdoc {

inline constexpr std::string_view kEnglish = "en";

/// What the stem of a resource file's name says.
struct NameLanguage {
    std::string resource;
    std::string language;
};

/// English unless the stem ends with "_" and the code of another supported language.
NameLanguage languageOfStem(const std::string& stem);

/// Tells of a stem that is English by the rules and seems to be meant otherwise. What it seems to
/// be meant as also hangs on the other stems in its place.
void checkMeantLanguage(const std::string& stem, const std::set<std::string>& stems,
                        FindingList& findings);

/// Whether only letter case keeps the name from being that of a resource file.
bool isResourceNameButForCase(const std::u16string& name);

} // namespace refdoc
