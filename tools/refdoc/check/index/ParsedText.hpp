#pragma once

#include <string>

#include <boost/json/value.hpp>

#include "refdoc/catalog/CatalogFolder.hpp"
#include "refdoc/catalog/TextReader.hpp"

namespace refdoc {

/// A text of a root with its parsed JSON.
struct ParsedText {
    const CatalogFile& file;
    const CatalogText& text;
    const boost::json::value& tree;

    /// The name of the file, followed by a colon and the entry's name if it has one.
    std::string shownName() const {
        return text.entry.empty() ? file.name : file.name + ':' + text.entry;
    }
};

} // namespace refdoc
