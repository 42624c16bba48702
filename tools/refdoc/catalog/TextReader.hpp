#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "refdoc/catalog/CatalogFolder.hpp"

namespace refdoc {

/// What a resource file holds: the text of a plain file, or an entry of a package.
struct CatalogText {
    enum class State {
        Read,
        Unreadable, ///< the file or entry, for the reason `cause`
        NoEntries,  ///< the package has none
        MacMetadata,
        OtherFile,     ///< an entry that does not have the name of a resource file
        LetterCase,    ///< nor has this one, but for the case of its extension
        OtherLanguage, ///< an entry whose language the package is not read for
    };

    State state = State::Read;
    std::string entry{};    ///< the entry's whole name; empty for a file as a whole
    std::size_t number = 0; ///< of the entry in its package
    bool isOnlyEntry = false;
    std::string stem{};        ///< of the entry's, or the plain file's, name
    std::string ownLanguage{}; ///< which that name has
    std::string language{};    ///< that the text counts as
    /// The language of those who get it. English texts go to all, but for those in packages of one
    /// language.
    std::string readers{};
    std::string content{};
    std::string cause{};
};

/// Reads the texts of a resource file one after another, as the library does. It holds one text,
/// and of a package its directory.
class TextReader {
public:
    explicit TextReader(const CatalogFile& file);
    ~TextReader();

    /// Nothing at the end.
    std::optional<CatalogText> next();

    /// Of all entries of a package.
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

/// Why the content of a file is empty; empty for a file without content.
std::string readFailure(const std::u16string& path);

} // namespace refdoc
