#include "refdoc/check/CheckFiles.hpp"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <memory>
#include <set>
#include <system_error>
#include <utility>

#include <fmt/format.h>

#include "environment/PathAndText.hpp"
#include "refdoc/check/CheckNames.hpp"
#include "refdoc/check/CheckPackage.hpp"
#include "refdoc/text/Text.hpp"
#include "reference/docparser/DocResourceParser.hpp"

namespace refdoc {

namespace {

using namespace reference::docparser;
namespace fs = std::filesystem;

/// The folder's path and its name under the root.
std::pair<std::u16string, std::string> folderOf(Catalog catalog) {
    const auto roots = DocResourceParser::getReferenceRoots();
    const std::u16string& path =
        catalog == Catalog::Lookup ? roots->referenceApiLookupFolder : roots->referenceApiFolder;
    std::u16string name = path.substr(roots->referenceRoot.size());
    name.erase(0, name.find_first_not_of(u'/'));
    return {path, toUtf8(name)};
}

/// What is in a folder, in the order in which the library reads files: that of UTF-16.
std::vector<fs::directory_entry> entriesOf(const fs::path& folder, std::error_code& failure) {
    std::vector<std::pair<std::u16string, fs::directory_entry>> entries;
    fs::directory_iterator at(folder, failure);
    for (; !failure && at != fs::directory_iterator(); at.increment(failure))
        entries.emplace_back(fromUtf8(at->path().filename().native()), *at);
    std::sort(entries.begin(), entries.end(),
              [](const auto& left, const auto& right) { return left.first < right.first; });
    std::vector<fs::directory_entry> result;
    result.reserve(entries.size());
    for (auto& [name, entry] : entries)
        result.push_back(std::move(entry));
    return result;
}

void addListingFailure(const std::string& folder, const std::error_code& failure,
                       std::vector<Finding>& findings) {
    if (!failure || failure == std::errc::no_such_file_or_directory)
        return;
    FindingList list(folder, {});
    list.add(Fault::Unreadable, Loss::Folder,
             fmt::format("the folder cannot be listed: {}", failure.message()));
    findings = list.take();
}

bool hasResourceName(const fs::path& path) {
    return DocResourceParser::isValidFilename(
        fl::filesystem::upath(fromUtf8(path.filename().native())));
}

/// As far as the folder can be listed.
std::size_t countResources(const fs::path& folder) {
    std::error_code failure;
    std::size_t count = 0;
    for (fs::directory_iterator at(folder, failure); !failure && at != fs::directory_iterator();
         at.increment(failure))
        if (hasResourceName(at->path()))
            ++count;
    return count;
}

class CatalogListing {
public:
    CatalogListing(Catalog catalog, std::u16string folder, std::string folderName)
        : catalog_(catalog), folder_(std::move(folder)), folderName_(std::move(folderName)) {}

    void add(const fs::directory_entry& entry) {
        std::error_code failure;
        const std::string bytes = entry.path().filename().native();
        const std::u16string name = fromUtf8(bytes);
        const bool isResource = hasResourceName(entry.path());
        FindingList findings(folderName_ + '/' + bytes, {});
        if (!entry.exists(failure) && isResource)
            findings.add(Fault::Unreadable, Loss::File,
                         fmt::format("the file cannot be read: {}",
                                     entry.is_symlink(failure) ? "a link that leads nowhere"
                                                               : failure.message()));
        else if (entry.is_directory(failure))
            addFolder(entry.path(), findings);
        else if (!entry.is_regular_file(failure))
            findings.add(Fault::OtherFile, Loss::Nothing, "no file: passed over");
        else if (!isResource)
            addOtherName(name, findings);
        else if (toUtf8(name) != bytes)
            findings.add(Fault::UnreadName, Loss::File, "the name is not UTF-8");
        else
            addFile(name, findings);
        append(findings);
    }

    /// Only now is it known which names there are.
    CatalogFolder finish() {
        for (const CatalogFile& file : result_.files) {
            FindingList findings(file.name, {});
            if (file.language == kEnglish && !file.stem.starts_with("._"))
                checkMeantLanguage(file.stem, stems_, findings);
            append(findings);
        }
        return std::move(result_);
    }

private:
    void append(FindingList& findings) {
        for (Finding& finding : findings.take())
            result_.findings.push_back(std::move(finding));
    }

    void addFile(const std::u16string& name, FindingList& findings) {
        const std::string stem = toUtf8(fl::filesystem::detail::extract_stem(name));
        const bool isPackage = name.ends_with(u".zip");
        if (isPackage && catalog_ == Catalog::Reference)
            return findings.add(Fault::UnreadName, Loss::File,
                                "full reference files are not read from packages");
        std::u16string path = folder_;
        fl::filesystem::detail::concatenate_pathname(path, name, true);
        const NameLanguage parts = languageOfStem(stem);
        stems_.insert(stem);
        result_.files.push_back({catalog_, std::move(path), folderName_ + '/' + toUtf8(name), stem,
                                 parts.resource, parts.language, isPackage});
    }

    static void addFolder(const fs::path& folder, FindingList& findings) {
        const std::string name = folder.filename().native();
        const bool isOfATool = name.starts_with('.') || name == "__MACOSX";
        const std::size_t count = isOfATool ? 0 : countResources(folder);
        if (count > 0)
            findings.add(Fault::UnreadName, Loss::Folder,
                         fmt::format("folders are not looked into, and this one holds {} resource "
                                     "file{}",
                                     count, count == 1 ? "" : "s"));
        else
            findings.add(Fault::OtherFile, Loss::Nothing, "a folder: passed over");
    }

    static void addOtherName(const std::u16string& name, FindingList& findings) {
        if (isResourceNameButForCase(name))
            findings.add(Fault::UnreadName, Loss::File,
                         "the extension is not in lower-case letters");
        else
            findings.add(Fault::OtherFile, Loss::Nothing, "no resource file: passed over");
    }

    Catalog catalog_;
    std::u16string folder_;
    std::string folderName_;
    std::set<std::string> stems_;
    CatalogFolder result_;
};

void readPlainFile(const CatalogFile& file, const TextVisitor& visit, FindingList& findings) {
    const ResourceText text{
        file, {}, 0, file.language, file.language, DocResourceParser::openAndReadFile(file.path)};
    const std::string failure = text.content.empty() ? readFailure(file.path) : std::string();
    if (!failure.empty())
        findings.add(Fault::Unreadable, Loss::File,
                     fmt::format("the file cannot be read: {}", failure));
    else if (isMacMetadata(text.content))
        findings.add(Fault::OtherFile, Loss::Nothing, "metadata of macOS, no documentation");
    else
        visit(text, findings);
}

} // namespace

CatalogFolder listCatalog(Catalog catalog) {
    const auto [folder, name] = folderOf(catalog);
    CatalogListing listing(catalog, folder, name);
    std::error_code failure;
    for (const fs::directory_entry& entry : entriesOf(toUtf8(folder), failure))
        listing.add(entry);
    CatalogFolder result = listing.finish();
    addListingFailure(name, failure, result.findings);
    return result;
}

std::string readFailure(const std::u16string& path) {
    std::error_code failure;
    const fs::path native(toUtf8(path));
    if (fs::is_directory(native, failure))
        return "a folder";
    if (fs::file_size(native, failure) == 0 && !failure)
        return {};
    if (!failure && !std::ifstream(native).is_open())
        failure = {errno, std::generic_category()};
    return failure ? failure.message() : "its size cannot be relied upon";
}

void readTexts(const CatalogFile& file, const TextVisitor& visit, const FindingSink& sink) {
    if (file.isPackage)
        return readPackage(file, visit, sink);
    FindingList findings(file.name, {});
    readPlainFile(file, visit, findings);
    sink(findings.take());
}

} // namespace refdoc
