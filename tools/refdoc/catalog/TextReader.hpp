#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "refdoc/catalog/CatalogFolder.hpp"

namespace refdoc {

/// The text of a plain resource file, or of one entry of a package.
struct CatalogText {
    enum class State {
        Read,
        Unreadable, ///< `cause` says why
        NoEntries,  ///< the package has none
        MacMetadata,
        OtherFile,     ///< an entry that is not named like a resource file
        LetterCase,    ///< the same, but only for the case of its extension
        OtherLanguage, ///< an entry in a language that the package is not read for
    };

    State state = State::Read;
    std::string entry{};    ///< the entry's full name; empty for a file as a whole
    std::size_t number = 0; ///< of the entry in its package
    bool isOnlyEntry = false;
    std::string stem{};        ///< from the name of the entry or plain file
    std::string ownLanguage{}; ///< the language in that name
    std::string language{};    ///< the language that the text counts as
    /// The language of the readers who get it. English texts go to everybody, except those in
    /// packages of one language.
    std::string readers{};
    std::string content{};
    std::string cause{};
};

/// Reads the texts of a resource file one after another, as the library does. Holds one text at a
/// time, and the directory of a package.
class TextReader {
public:
    explicit TextReader(const CatalogFile& file);
    ~TextReader();

    /// Returns nothing at the end.
    std::optional<CatalogText> next();

    /// The stems of all entries of a package.
    const std::set<std::string>& entryStems() const { return stems_; }

private:
    struct Entries;

    CatalogText plainText() const;
    CatalogText entryText(std::size_t number);
    void setLanguages(CatalogText& text) const;
    CatalogText::State stateByName(const CatalogText& text, const std::u16string& name) const;
    void readEntry(CatalogText& text) const;

    const CatalogFile& file_;
    std::vector<std::u16string> suffixes_;
    std::unique_ptr<Entries> entries_; ///< null for a plain file, or a package that cannot be read
    std::set<std::string> stems_;
    std::string failure_; ///< why the package cannot be read
    std::size_t next_ = 0;
};

/// Why reading a file gave nothing; empty for a file that really is empty.
std::string readFailure(const std::u16string& path);

} // namespace refdoc
