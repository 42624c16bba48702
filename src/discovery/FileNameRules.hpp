#pragma once

#include <string>
#include <vector>

namespace reference::docparser {

/// What the stem of a product resource file says about its language.
enum class FileLanguage {
    Base,    ///< no known suffix: English
    Current, ///< the suffix of the current documentation language
    Other,   ///< the suffix of another supported language
};

/// @param localeSuffixes "_" and the code, for each supported language other than English.
/// @param languageSuffix "_" and the code of the current language.
FileLanguage getFileLanguage(const std::u16string& stem,
                             const std::vector<std::u16string>& localeSuffixes,
                             const std::u16string& languageSuffix);

} // namespace reference::docparser
