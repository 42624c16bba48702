#include "refdoc/check/CheckPackage.hpp"

#include <cstddef>
#include <exception>
#include <ios>
#include <memory>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <utility>

#include <fmt/format.h>

#include "environment/PathAndText.hpp"
#include "refdoc/catalog/OpenedPackage.hpp"
#include "refdoc/check/CheckNames.hpp"
#include "refdoc/text/Text.hpp"
#include "reference/docparser/DocResourceParser.hpp"

namespace refdoc {

namespace {

using namespace reference::docparser;
using opc::zqservices::FileSystemEntry;
using opc::zqservices::FileSystemManager;

std::string contentOf(const FileSystemEntry& leaf, const FileSystemManager& manager) {
    std::stringstream content(std::ios_base::in | std::ios_base::out);
    const auto source = manager.getFileContentSource(leaf, opc::zqservices::TransformMode::Decoded);
    opc::StreamHelper::copyStreamToStream(source->getInputStream(), content);
    return std::move(content).str();
}

class PackageReader {
public:
    PackageReader(const CatalogFile& file, const TextVisitor& visit, const FindingSink& sink)
        : file_(file), visit_(visit), sink_(sink), package_(file.path),
          leaves_(package_.manager.getAllLeafs()) {
        for (const FileSystemEntry& leaf : leaves_)
            stems_.insert(toUtf8(fl::filesystem::detail::extract_stem(leaf.getBaseName())));
    }

    void read() {
        for (std::size_t number = 0; number < leaves_.size(); ++number)
            readLeaf(number);
        if (leaves_.empty()) {
            FindingList list(file_.name, {});
            list.addAt(Level::Warning, Fault::OtherFile, Loss::Nothing,
                       "the package holds no entries");
            sink_(list.take());
        }
    }

private:
    void readLeaf(std::size_t number) {
        const FileSystemEntry& leaf = leaves_[number];
        const std::u16string name =
            fl::filesystem::detail::make_native_form(leaf.getBaseName(), true);
        const std::string path = toUtf8(package_.manager.getPath(leaf));
        FindingList findings(file_.name, path);
        if (isMetadata(leaf, path))
            findings.add(
                Fault::OtherFile, Loss::Nothing,
                "metadata of macOS, no documentation: it counts as an entry of the package "
                "all the same");
        else if (DocResourceParser::isValidFilename(fl::filesystem::upath(name)))
            readResource(number, path, toUtf8(fl::filesystem::detail::extract_stem(name)),
                         findings);
        else if (isResourceNameButForCase(name))
            findings.add(Fault::UnreadName, Loss::Leaf,
                         "the extension is not in lower-case letters");
        else
            findings.add(Fault::OtherFile, Loss::Nothing, "no resource file: passed over");
        sink_(findings.take());
    }

    bool isMetadata(const FileSystemEntry& leaf, const std::string& path) const {
        try {
            return path.starts_with("__MACOSX/") &&
                   isMacMetadata(contentOf(leaf, package_.manager));
        } catch (const std::exception&) {
            return false;
        }
    }

    void readResource(std::size_t number, const std::string& path, const std::string& stem,
                      FindingList& findings) {
        const std::string language =
            leaves_.size() == 1 ? onlyLeafLanguage(stem, findings) : leafLanguage(stem, findings);
        if (language.empty())
            return;
        ResourceText text{file_, path, number, language, readersOf(language), {}};
        try {
            text.content = contentOf(leaves_[number], package_.manager);
        } catch (const std::exception& failure) {
            return findings.add(Fault::Unreadable, Loss::Leaf,
                                fmt::format("the entry cannot be read: {}", failure.what()));
        }
        visit_(text, findings);
    }

    /// A package of one language is read for that language alone.
    const std::string& readersOf(const std::string& language) const {
        return file_.language == kEnglish ? language : file_.language;
    }

    /// Of a package with one leaf, the package's name tells the language. Nothing for a leaf that
    /// is not read.
    std::string onlyLeafLanguage(const std::string& stem, FindingList& findings) const {
        const NameLanguage own = languageOfStem(stem);
        if (file_.language == kEnglish && own.language != kEnglish)
            findings.add(Fault::UnknownLanguage, Loss::Nothing,
                         fmt::format("the package's only entry: read as English, not as {}, since "
                                     "the package's name has no language",
                                     own.language));
        if (file_.language == kEnglish || stem.ends_with("_" + file_.language))
            return file_.language;
        findings.add(Fault::UnreadName, Loss::Leaf,
                     fmt::format("the only entry of a package for {0} must end with _{0} itself",
                                 file_.language));
        return {};
    }

    /// Of any other package the leaves do, as far as the package itself is read.
    std::string leafLanguage(const std::string& stem, FindingList& findings) const {
        const NameLanguage own = languageOfStem(stem);
        if (own.language == kEnglish)
            checkMeantLanguage(stem, stems_, findings);
        if (file_.language == kEnglish || own.language == file_.language)
            return own.language;
        if (own.language == kEnglish) {
            findings.add(Fault::UnknownLanguage, Loss::Nothing,
                         fmt::format("read as English, and only by readers of {}: of a package "
                                     "with several entries the entries' names say the language",
                                     file_.language));
            return own.language;
        }
        findings.add(Fault::UnreadName, Loss::Leaf,
                     fmt::format("is for {}, and the package is only read for {}", own.language,
                                 file_.language));
        return {};
    }

    const CatalogFile& file_;
    const TextVisitor& visit_;
    const FindingSink& sink_;
    OpenedPackage package_;
    std::vector<FileSystemEntry> leaves_;
    std::set<std::string> stems_;
};

} // namespace

void readPackage(const CatalogFile& file, const TextVisitor& visit, const FindingSink& sink) {
    std::optional<PackageReader> reader;
    try {
        reader.emplace(file, visit, sink);
    } catch (const std::exception& failure) {
        FindingList findings(file.name, {});
        findings.add(Fault::Unreadable, Loss::File,
                     fmt::format("the package cannot be read: {}", failure.what()));
        return sink(findings.take());
    }
    reader->read();
}

} // namespace refdoc
