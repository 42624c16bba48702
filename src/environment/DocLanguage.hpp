#pragma once

#include <string>
#include <vector>

#pragma GCC visibility push(default)

namespace doclanguage {

/// The documentation language of the process. Any thread may ask; each answer is the current
/// service's own, and whatever the service throws reaches the caller.
class DocLanguage {
public:
    /// The one object, valid to the end of the process.
    static const DocLanguage& getInstance();

    /// The codes of all supported documentation languages, English ("en") included.
    std::vector<std::u16string> getSupportedDocLanguages() const;

    /// The code of the current documentation language, "en" for English.
    std::u16string getDocLanguage() const;
};

} // namespace doclanguage

#pragma GCC visibility pop
