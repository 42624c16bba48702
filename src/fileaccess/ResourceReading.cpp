#include "fileaccess/ResourceReading.hpp"

#include <cstddef>
#include <ios>
#include <memory>
#include <sstream>
#include <string>
#include <utility>

#include "environment/Diagnostics.hpp"
#include "environment/PathAndText.hpp"
#include "environment/ZipPackages.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "settings/DiagnosticLog.hpp"

namespace reference::docparser {
namespace {

using foundation::log::kSeverityDetail;
using foundation::log::kSeverityProblem;

constexpr const char* kReadingFile = "Reading file: ";

void readPlainFile(const std::u16string& path, std::string& content) {
    content.clear();
    logRecord(kSeverityDetail, kReadingFile, path);
    fl::filesystem::basic_ifstream<char> file(path, std::ios_base::binary);
    if (!file.is_open())
        return;
    try {
        file.seekg(0, std::ios_base::end);
        // A file whose end cannot be found has the size -1, which no string can hold.
        content.resize(static_cast<std::size_t>(std::streamoff(file.tellg())));
        file.seekg(0, std::ios_base::beg);
        file.read(content.data(), static_cast<std::streamsize>(content.size()));
    } catch (...) {
        logRecord(kSeverityProblem, "Problem reading JSON file: ", path);
    }
    file.close();
}

std::string readZipEntry(const ProductZipData& product) {
    std::stringstream content(std::ios_base::in | std::ios_base::out);
    const auto source = product.getFileSystemManager()->getFileContentSource(
        product.getEntry(), opc::zqservices::TransformMode::Decoded);
    opc::StreamHelper::copyStreamToStream(source->getInputStream(), content);
    return std::move(content).str();
}

} // namespace

void readContent(const ProductPathData& product, std::string& content) {
    readPlainFile(product.getFullPath(), content);
}

void readContent(const ProductZipData& product, std::string& content) {
    std::string().swap(content);
    content = DocResourceParser::openAndReadFile(product);
}

namespace DocResourceParser {

std::string openAndReadFile(const std::u16string& path) {
    std::string content;
    readPlainFile(path, content);
    return content;
}

std::string openAndReadFile(const ProductPathData& product) {
    return openAndReadFile(product.getFullPath());
}

std::string openAndReadFile(const ProductZipData& product) {
    logRecord(kSeverityDetail, kReadingFile, product.getName());
    try {
        return readZipEntry(product);
    } catch (...) {
        logRecord(kSeverityDetail, "Error reading file: ", product.getName());
    }
    return {};
}

} // namespace DocResourceParser
} // namespace reference::docparser
