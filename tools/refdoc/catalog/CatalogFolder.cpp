#include "refdoc/catalog/CatalogFolder.hpp"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "environment/PathAndText.hpp"
#include "refdoc/text/Text.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "reference/docparser/ParsingTools.hpp"

namespace refdoc {

namespace {

namespace fs = std::filesystem;
namespace parser = reference::docparser::DocResourceParser;
namespace paths = fl::filesystem::detail;
using Kind = OtherEntry::Kind;

struct NamedEntry {
    std::u16string name;
    fs::directory_entry entry;
};

std::vector<NamedEntry> entriesOf(const fs::path& folder, std::error_code& failure) {
    std::vector<NamedEntry> entries;
    fs::directory_iterator at(folder, failure);
    for (; !failure && at != fs::directory_iterator(); at.increment(failure))
        entries.push_back({fromUtf8(at->path().filename().native()), *at});
    if (failure == std::errc::no_such_file_or_directory)
        failure.clear();
    std::sort(entries.begin(), entries.end(), [](const NamedEntry& left, const NamedEntry& right) {
        return left.name < right.name;
    });
    return entries;
}

/// How many resource files a folder holds, as far as it can be listed. Names that begin with a dot
/// belong to tools.
std::size_t countResources(const fs::path& folder) {
    const std::string name = folder.filename().native();
    if (name.starts_with('.') || name == "__MACOSX")
        return 0;
    std::error_code failure;
    const std::vector<NamedEntry> entries = entriesOf(folder, failure);
    return static_cast<std::size_t>(
        std::count_if(entries.begin(), entries.end(),
                      [](const NamedEntry& each) { return isResourceFileName(each.name); }));
}

class Listing {
public:
    explicit Listing(Catalog catalog) : catalog_(catalog) {
        const auto roots = parser::getReferenceRoots();
        path_ = catalog == Catalog::Lookup ? roots->referenceApiLookupFolder
                                           : roots->referenceApiFolder;
        std::u16string name = path_.substr(roots->referenceRoot.size());
        name.erase(0, name.find_first_not_of(u'/'));
        folder_.name = toUtf8(name);
    }

    CatalogFolder run() {
        for (const NamedEntry& each : entriesOf(toUtf8(path_), folder_.failure))
            isResourceFileName(each.name) ? addResource(each) : addOther(each);
        return std::move(folder_);
    }

private:
    void addResource(const NamedEntry& each) {
        std::error_code failure;
        if (!each.entry.exists(failure))
            add(each.entry.is_symlink(failure) ? Kind::BrokenLink : Kind::Unreachable, each,
                failure.message());
        else if (!each.entry.is_regular_file(failure))
            addOther(each);
        else if (toUtf8(each.name) != each.entry.path().filename().native())
            add(Kind::NotUtf8, each);
        else if (catalog_ == Catalog::Reference && isPackage(each.name))
            add(Kind::PackagedReference, each);
        else
            addFile(each.name);
    }

    void addFile(const std::u16string& name) {
        CatalogFile file{.catalog = catalog_,
                         .path = path_,
                         .name = folder_.name + '/' + toUtf8(name),
                         .stem = toUtf8(paths::extract_stem(name)),
                         .resource = {},
                         .language = {},
                         .isPackage = isPackage(name)};
        paths::concatenate_pathname(file.path, name, true);
        StemParts parts = partsOfStem(file.stem, suffixes_);
        file.resource = std::move(parts.resource);
        file.language = std::move(parts.language);
        folder_.files.push_back(std::move(file));
    }

    void addOther(const NamedEntry& each) {
        std::error_code failure;
        if (each.entry.is_directory(failure))
            addFolder(each);
        else if (!each.entry.is_regular_file(failure))
            add(Kind::NotAFile, each);
        else
            add(isResourceFileNameButForCase(each.name) ? Kind::LetterCase : Kind::OtherFile, each);
    }

    void addFolder(const NamedEntry& each) {
        const std::size_t count = countResources(each.entry.path());
        add(count > 0 ? Kind::FolderOfResources : Kind::Folder, each);
        folder_.others.back().resourceCount = count;
    }

    void add(Kind kind, const NamedEntry& each, std::string cause = {}) {
        folder_.others.push_back(
            {.kind = kind,
             .name = folder_.name + '/' + each.entry.path().filename().native(),
             .cause = std::move(cause)});
    }

    static bool isPackage(const std::u16string& name) { return name.ends_with(u".zip"); }

    Catalog catalog_;
    std::u16string path_;
    std::vector<std::u16string> suffixes_ = parser::ParsingTools::getSupportedDocLocales();
    CatalogFolder folder_;
};

} // namespace

CatalogFolder listCatalog(Catalog catalog) {
    return Listing(catalog).run();
}

StemParts partsOfStem(const std::string& stem, const std::vector<std::u16string>& suffixes) {
    const std::u16string wide = fromUtf8(stem);
    for (const std::u16string& suffix : suffixes)
        if (wide.ends_with(suffix))
            return {toUtf8(std::u16string_view(wide).substr(0, wide.size() - suffix.size())),
                    toUtf8(suffix.substr(1))};
    return {stem, std::string(kEnglish)};
}

bool isResourceFileName(const std::u16string& name) {
    return parser::isValidFilename(fl::filesystem::upath(name));
}

bool isResourceFileNameButForCase(const std::u16string& name) {
    const std::u16string extension = foldCase(paths::extract_extension(name));
    return extension == parser::ParsingTools::kJsonExt ||
           extension == parser::ParsingTools::kZipExt;
}

} // namespace refdoc
