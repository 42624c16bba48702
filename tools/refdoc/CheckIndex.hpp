#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include <boost/json/value.hpp>

#include "refdoc/CheckFiles.hpp"

namespace refdoc {

/// What is known of all files of a root, for the faults that only show between them.
class CheckIndex {
public:
    using Names = std::unordered_set<std::string>;

    void addFile(const CatalogFile& file);
    /// Texts come in the order in which the library reads them.
    void addSoundText(const ResourceText& text, const boost::json::value& resource);
    /// The pages that a full reference file documents, sound or not: links to them are meant.
    void addPages(const boost::json::value& resource);

    /// Whether exactly this text was added as a sound one.
    bool isSound(const ResourceText& text) const { return sound_.contains(versionOf(text)); }
    bool hasReferenceFile(const std::string& stem) const { return referenceStems_.contains(stem); }
    bool hasPage(const std::string& page) const { return pages_.contains(page); }

    /// The names (of lookups) or hrefs of the English documents of `key` that readers of the text
    /// get beside it; null when there is none.
    const Names* englishItems(const ResourceText& text, const std::string& key) const;
    /// Whether the English file of a full reference file was sound.
    bool hasEnglish(const ResourceText& text) const;

    /// The texts of one language that hold a lookup document of the key, in reading order, each as
    /// a file's name, with the leaf's behind a colon.
    const std::vector<std::string>& holders(const ResourceText& text, const std::string& key) const;
    static std::string idOf(const ResourceText& text);

private:
    using Documents = std::map<std::string, Names>; // by key

    using Version = std::pair<std::string, std::size_t>;

    /// Leaves may have equal names, and a file may change between two readings.
    static Version versionOf(const ResourceText& text);

    std::set<std::string> referenceStems_;
    std::set<Version> sound_;
    Names pages_;
    Documents englishLookups_;
    std::map<std::string, Documents> englishReferences_; // by resource
    std::map<std::pair<std::string, std::string>, std::vector<std::string>>
        holders_; // by language and key
};

/// The page that a link leads to: the link without what follows "#" or "?", normalised. Empty for
/// links that leave the documentation or stay on their page.
std::string pageOf(std::string_view link);

} // namespace refdoc
