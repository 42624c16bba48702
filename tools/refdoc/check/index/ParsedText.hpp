#pragma once

#include <string>

#include <boost/json/value.hpp>

#include "refdoc/catalog/CatalogFolder.hpp"
#include "refdoc/catalog/TextReader.hpp"

namespace refdoc {

/// A text of a root, and the tree of its JSON.
struct ParsedText {
    const CatalogFile& file;
    const CatalogText& text;
    const boost::json::value& tree;

    /// The file's name, with the entry's behind a colon.
    std::string shownName() const {
        return text.entry.empty() ? file.name : file.name + ':' + text.entry;
    }
};

} // namespace refdoc
