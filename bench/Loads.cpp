#include "Loads.hpp"

#include <algorithm>
#include <fstream>
#include <ios>
#include <iterator>
#include <map>
#include <memory>
#include <stdexcept>
#include <utility>

#include <boost/json/monotonic_resource.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>

#include "Inflate.hpp"
#include "PosixProgram.hpp"
#include "Readers.hpp"
#include "SplitText.hpp"
#include "environment/Services.hpp"
#include "reference/docparser/DocResourceParser.hpp"

namespace bench {

namespace {

namespace fs = std::filesystem;
namespace parser = reference::docparser::DocResourceParser;

/// The padding that simdjson needs after a text.
constexpr std::size_t kPadding = 64;

constexpr const char* kLookupFolder = "docCatalog/referenceapi_lookup";
constexpr const char* kSplitForm = "split-1-"; // to be counted up when split texts change
constexpr const char* kReferenceFolder = "docCatalog/referenceapi";

std::string readWhole(const fs::path& path) {
    std::ifstream file;
    file.exceptions(std::ios_base::failbit | std::ios_base::badbit);
    file.open(path, std::ios_base::binary | std::ios_base::ate);
    const auto size = static_cast<std::size_t>(file.tellg());
    std::string text;
    text.reserve(size + kPadding);
    text.resize(size);
    file.seekg(0).read(text.data(), static_cast<std::streamsize>(text.size()));
    return text;
}

std::vector<fs::path> filesIn(const fs::path& folder, const std::string& extension) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(folder))
        if (entry.path().extension() == extension)
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

fs::path splitPathOf(const fs::path& file) {
    return file.parent_path() / std::string(kSplitForm).append(kMembersDigest) / file.stem();
}

bool isEnglish(const fs::path& file) {
    return file.stem().string().find('_') == std::string::npos;
}

/// Reads the records of one file, of either kind, as one of the readers does.
struct FileReader {
    std::function<Lookups(std::string&, const SplitText*)> lookups;
    std::function<RefItems(std::string&, const SplitText*)> refItems;
};

void parseOnly(const std::string& text) {
    boost::json::monotonic_resource arena(1024);
    static_cast<void>(boost::json::parse(text, &arena));
}

template <typename ReadLookups, typename ReadRefItems>
FileReader fileReader(ReadLookups lookups, ReadRefItems refItems) {
    return {[lookups](std::string& text, const SplitText*) { return lookups(text); },
            [refItems](std::string& text, const SplitText*) { return refItems(text); }};
}

FileReader yardstickReader() {
    return {[](std::string& text, const SplitText* split) {
                parseOnly(text);
                return RecordReader<SplitJson>::readLookups(SplitJson::root(*split));
            },
            [](std::string& text, const SplitText* split) {
                parseOnly(text);
                return RecordReader<SplitJson>::readRefItems(SplitJson::root(*split));
            }};
}

FileReader parseReader() {
    return fileReader(
        [](const std::string& text) {
            parseOnly(text);
            return Lookups();
        },
        [](const std::string& text) {
            parseOnly(text);
            return RefItems();
        });
}

const FileReader& findFileReader(const std::string& name) {
    static const std::map<std::string, FileReader> kFileReaders{
        {"yardstick", yardstickReader()},
        {"parse", parseReader()},
        {"boost_json", fileReader(readLookupsWithBoostJson, readRefItemsWithBoostJson)},
        {"boost_json_arena",
         fileReader(readLookupsWithBoostJsonArena, readRefItemsWithBoostJsonArena)},
        {"rapidjson", fileReader(readLookupsWithRapidJson, readRefItemsWithRapidJson)},
        {"simdjson", fileReader(readLookupsWithSimdjson, readRefItemsWithSimdjson)},
        {"nlohmann", fileReader(readLookupsWithNlohmann, readRefItemsWithNlohmann)}};
    return kFileReaders.at(name);
}

/// The files of one load and, for the yardstick, their split texts.
struct Source {
    std::vector<fs::path> files;
    std::vector<SplitText> splits;

    const SplitText* splitOf(std::size_t file) const {
        return splits.empty() ? nullptr : &splits[file];
    }
};

std::shared_ptr<const Source> openSource(std::vector<fs::path> files, const std::string& reader) {
    auto source = std::make_shared<Source>();
    if (reader == "yardstick")
        for (const fs::path& file : files)
            source->splits.push_back(loadSplitText(splitPathOf(file)));
    source->files = std::move(files);
    return source;
}

PreparedLoad measured(std::function<Loaded()> run, const std::vector<std::size_t>& sizes) {
    PreparedLoad prepared{std::move(run)};
    for (const std::size_t size : sizes) {
        prepared.bytes += size;
        prepared.largestFile = std::max(prepared.largestFile, size);
    }
    return prepared;
}

PreparedLoad measured(std::function<Loaded()> run, const std::vector<fs::path>& files) {
    std::vector<std::size_t> sizes;
    sizes.reserve(files.size());
    for (const fs::path& file : files)
        sizes.push_back(fs::file_size(file));
    return measured(std::move(run), sizes);
}

/// The sizes of the contents.
std::vector<std::size_t> sizesIn(const std::vector<fs::path>& packages) {
    std::vector<std::size_t> sizes;
    for (const fs::path& package : packages)
        for (const std::string& content : inflateWithLibzip(package))
            sizes.push_back(content.size());
    return sizes;
}

PreparedLoad prepareLookup(const fs::path& root, const std::string& reader) {
    auto files = filesIn(root / kLookupFolder, ".json");
    if (reader == "library") {
        setLibraryRoot(root, u"en");
        const auto run = [] {
            auto resources = parser::getResourceLookupFiles();
            Loaded loaded;
            loaded.lookups.push_back(std::move(resources.first));
            loaded.lookups.push_back(std::move(resources.second));
            return loaded;
        };
        return files.empty() ? measured(run, sizesIn(filesIn(root / kLookupFolder, ".zip")))
                             : measured(run, files);
    }
    if (reader == "program")
        return measured(
            [folder = root / kLookupFolder] {
                Loaded loaded;
                loaded.lookups.push_back(readLookupFolder(folder));
                return loaded;
            },
            files);
    const auto run = [source = openSource(files, reader), read = findFileReader(reader).lookups] {
        Loaded loaded;
        Lookups& all = loaded.lookups.emplace_back();
        for (std::size_t number = 0; number < source->files.size(); ++number) {
            std::string text = readWhole(source->files[number]);
            all.merge(read(text, source->splitOf(number)));
        }
        return loaded;
    };
    return measured(run, files);
}

/// Loads resources one after another through the library.
PreparedLoad prepareLibraryResources(const std::vector<fs::path>& files) {
    std::vector<std::u16string> names;
    names.reserve(files.size());
    for (const fs::path& file : files)
        names.push_back(file.stem().u16string());
    const auto run = [names] {
        Loaded loaded;
        for (const std::u16string& name : names)
            loaded.refItems.push_back(parser::getResourceFile(name));
        return loaded;
    };
    return measured(run, files);
}

/// libc_x4 is libc.json of the root size4.
std::pair<fs::path, std::vector<fs::path>> findResources(const fs::path& corpora,
                                                         const std::string& corpus) {
    const std::size_t scale = corpus.find("_x");
    const fs::path root =
        corpora / (scale == std::string::npos ? "plain" : "size" + corpus.substr(scale + 2));
    if (corpus != "all")
        return {root, {root / kReferenceFolder / (corpus.substr(0, scale) + ".json")}};
    auto files = filesIn(root / kReferenceFolder, ".json");
    std::erase_if(files, [](const fs::path& file) { return !isEnglish(file); });
    return {root, files};
}

PreparedLoad prepareReference(const fs::path& corpora, const Load& load) {
    const auto [root, files] = findResources(corpora, load.corpus);
    if (load.reader == "library") {
        setLibraryRoot(root, u"en");
        return prepareLibraryResources(files);
    }
    const auto run = [source = openSource(files, load.reader),
                      read = findFileReader(load.reader).refItems] {
        Loaded loaded;
        for (std::size_t number = 0; number < source->files.size(); ++number) {
            std::string text = readWhole(source->files[number]);
            loaded.refItems.push_back(read(text, source->splitOf(number)));
        }
        return loaded;
    };
    return measured(run, files);
}

/// The translated resources: the library lays one file over the other, or reads the same two one
/// after the other, each as the English file of a resource of its own.
PreparedLoad prepareOverlay(const fs::path& root, const std::string& language, bool isSum) {
    const std::string suffix = "_" + language + ".json";
    std::vector<fs::path> english;
    std::vector<fs::path> both;
    for (const fs::path& file : filesIn(root / kReferenceFolder, ".json")) {
        const fs::path localized = root / kReferenceFolder / (file.stem().string() + suffix);
        if (!fs::exists(localized))
            continue;
        english.push_back(file);
        both.insert(both.end(), {file, localized});
    }
    setLibraryRoot(root, isSum ? u"en" : fs::path(language).u16string());
    PreparedLoad prepared = prepareLibraryResources(isSum ? both : english);
    return measured(std::move(prepared.run), both);
}

PreparedLoad prepareInflation(const fs::path& root, const std::string& reader) {
    const auto inflate = reader == "libzip" ? inflateWithLibzip : inflateWithLibdeflate;
    const auto packages = filesIn(root / kLookupFolder, ".zip");
    const auto run = [inflate, packages] {
        Loaded loaded;
        for (const fs::path& package : packages)
            for (std::string& content : inflate(package))
                loaded.content = std::move(content);
        return loaded;
    };
    return measured(run, sizesIn(packages));
}

template <typename Documents>
std::size_t count(const std::vector<Documents>& all) {
    std::size_t records = 0;
    for (const Documents& documents : all)
        for (const auto& [key, document] : documents)
            for (const auto& [name, items] : document.items)
                records += items.size();
    return records;
}

} // namespace

std::size_t Loaded::countRecords() const {
    return count(lookups) + count(refItems);
}

PreparedLoad prepare(const fs::path& corpora, const Load& load) {
    if (load.kind == "lookup")
        return prepareLookup(corpora / load.corpus, load.reader);
    if (load.kind == "reference")
        return prepareReference(corpora, load);
    if (load.kind == "overlay")
        return prepareOverlay(corpora / "plain", load.corpus, load.reader == "sum");
    if (load.kind == "inflate")
        return prepareInflation(corpora / load.corpus, load.reader);
    throw std::invalid_argument("no such load: " + load.kind);
}

void splitCorpora(const fs::path& corpora) {
    for (const auto& root : fs::directory_iterator(corpora)) {
        for (const char* folder : {kLookupFolder, kReferenceFolder}) {
            if (!fs::exists(root.path() / folder))
                continue;
            for (const fs::path& file : filesIn(root.path() / folder, ".json")) {
                const fs::path splitPath = splitPathOf(file);
                fs::create_directories(splitPath.parent_path());
                if (isEnglish(file) && (!fs::exists(splitPath) ||
                                        fs::last_write_time(splitPath) < fs::last_write_time(file)))
                    save(split(readWhole(file)), splitPath);
            }
        }
    }
}

void setLibraryRoot(const fs::path& root, const std::u16string& language) {
    environment::Services services;
    services.docDataRoot = [text = root.u16string()] { return text; };
    services.docLanguage = [language] { return language; };
    environment::setServices(std::move(services));
    parser::setReferenceRoot(root.u16string());
}

} // namespace bench
