#include "refdoc/catalog/TextReader.hpp"

#include <cerrno>
#include <exception>
#include <filesystem>
#include <fstream>
#include <ios>
#include <sstream>
#include <string_view>
#include <system_error>
#include <utility>

#include "environment/PathAndText.hpp"
#include "refdoc/catalog/OpenedPackage.hpp"
#include "refdoc/text/Text.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "reference/docparser/ParsingTools.hpp"
#include "reference/docparser/ProductData.hpp"

namespace refdoc {

namespace {

namespace paths = fl::filesystem::detail;
namespace parser = reference::docparser::DocResourceParser;
using opc::zqservices::FileSystemEntry;
using opc::zqservices::FileSystemManager;
using State = CatalogText::State;

/// Whether the file is one that macOS keeps beside another where the file system, or a package, has
/// no other place for its metadata.
bool isMacMetadata(std::string_view content) {
    return content.starts_with(std::string_view("\x00\x05\x16\x07", 4));
}

/// Why reading an entry gave nothing; empty for an entry that really is empty.
std::string readFailure(const FileSystemEntry& entry, const FileSystemManager& manager) {
    try {
        std::ostringstream content;
        const auto source =
            manager.getFileContentSource(entry, opc::zqservices::TransformMode::Decoded);
        opc::StreamHelper::copyStreamToStream(source->getInputStream(), content);
        return {};
    } catch (const std::exception& failure) {
        return failure.what();
    }
}

} // namespace

struct TextReader::Entries {
    explicit Entries(const std::u16string& path)
        : package(path), all(package.manager.getAllLeafs()) {}

    OpenedPackage package;
    std::vector<FileSystemEntry> all;
};

TextReader::TextReader(const CatalogFile& file)
    : file_(file), suffixes_(parser::ParsingTools::getSupportedDocLocales()) {
    if (!file.isPackage)
        return;
    try {
        entries_ = std::make_unique<Entries>(file.path);
    } catch (const std::exception& failure) {
        failure_ = failure.what();
        return;
    }
    for (const FileSystemEntry& entry : entries_->all)
        stems_.insert(toUtf8(paths::extract_stem(entry.getBaseName())));
}

TextReader::~TextReader() = default;

std::optional<CatalogText> TextReader::next() {
    const std::size_t number = next_++;
    if (entries_ != nullptr && number < entries_->all.size())
        return entryText(number);
    if (number > 0)
        return std::nullopt;
    if (!file_.isPackage)
        return plainText();
    return CatalogText{.state = entries_ == nullptr ? State::Unreadable : State::NoEntries,
                       .cause = failure_};
}

CatalogText TextReader::plainText() const {
    CatalogText text{.stem = file_.stem,
                     .ownLanguage = file_.language,
                     .language = file_.language,
                     .readers = file_.language,
                     .content = parser::openAndReadFile(file_.path)};
    if (text.content.empty())
        text.cause = readFailure(file_.path);
    if (!text.cause.empty())
        text.state = State::Unreadable;
    else if (isMacMetadata(text.content))
        text.state = State::MacMetadata;
    return text;
}

CatalogText TextReader::entryText(std::size_t number) {
    const FileSystemEntry& entry = entries_->all[number];
    const std::u16string name = paths::make_native_form(entry.getBaseName(), true);
    CatalogText text{.entry = toUtf8(entries_->package.manager.getPath(entry)),
                     .number = number,
                     .isOnlyEntry = entries_->all.size() == 1,
                     .stem = toUtf8(paths::extract_stem(name))};
    setLanguages(text);
    text.state = stateByName(text, name);
    if (text.state == State::Read || text.entry.starts_with("__MACOSX/"))
        readEntry(text);
    return text;
}

/// The name of a package with a single entry gives the language; otherwise the names of the entries
/// do.
void TextReader::setLanguages(CatalogText& text) const {
    text.ownLanguage = partsOfStem(text.stem, suffixes_).language;
    text.language = text.isOnlyEntry ? file_.language : text.ownLanguage;
    text.readers = file_.language == kEnglish ? text.language : file_.language;
}

CatalogText::State TextReader::stateByName(const CatalogText& text,
                                           const std::u16string& name) const {
    if (!isResourceFileName(name))
        return isResourceFileNameButForCase(name) ? State::LetterCase : State::OtherFile;
    const bool isForAll = file_.language == kEnglish;
    const bool isForReaders =
        text.isOnlyEntry ? text.stem.ends_with('_' + file_.language)
                         : text.ownLanguage == kEnglish || text.ownLanguage == file_.language;
    return isForAll || isForReaders ? State::Read : State::OtherLanguage;
}

/// macOS adds files to packages that are also named like resource files.
void TextReader::readEntry(CatalogText& text) const {
    FileSystemManager& manager = entries_->package.manager;
    const FileSystemEntry& entry = entries_->all[text.number];
    std::string content =
        parser::openAndReadFile({fromUtf8(text.stem), text.language != kEnglish, entry, &manager});
    if (text.entry.starts_with("__MACOSX/") && isMacMetadata(content)) {
        text.state = State::MacMetadata;
    } else if (text.state == State::Read) {
        text.cause = content.empty() ? readFailure(entry, manager) : std::string();
        text.state = text.cause.empty() ? State::Read : State::Unreadable;
        text.content = std::move(content);
    }
}

std::string readFailure(const std::u16string& path) {
    std::error_code failure;
    const std::filesystem::path native(toUtf8(path));
    if (std::filesystem::is_directory(native, failure))
        return "a folder";
    if (std::filesystem::file_size(native, failure) == 0 && !failure)
        return {};
    if (!failure && !std::ifstream(native).is_open())
        failure = {errno, std::generic_category()};
    return failure ? failure.message() : "its size is not reliable";
}

} // namespace refdoc
