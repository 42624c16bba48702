#include "reference/docparser/DocResourceParser.hpp"

#include <cstddef>
#include <ios>
#include <memory>
#include <sstream>
#include <string>
#include <utility>

#include "environment/Diagnostics.hpp"
#include "environment/PathAndText.hpp"
#include "environment/ZipPackages.hpp"
#include "settings/DiagnosticLog.hpp"

namespace reference::docparser::DocResourceParser {
namespace {

using foundation::log::kSeverityDetail;
using foundation::log::kSeverityProblem;

constexpr const char* kReadingFile = "Reading file: ";

std::string readPlainFile(const std::u16string& path) {
    std::string content;
    fl::filesystem::basic_ifstream<char> file(path, std::ios_base::binary);
    if (!file.is_open())
        return content;
    try {
        file.seekg(0, std::ios_base::end);
        // Where the end cannot be taken the size is -1, which no string can hold.
        content.resize(static_cast<std::size_t>(std::streamoff(file.tellg())));
        file.seekg(0, std::ios_base::beg);
        file.read(content.data(), static_cast<std::streamsize>(content.size()));
    } catch (...) {
        logRecord(kSeverityProblem, "Problem reading JSON file: ", path);
    }
    file.close();
    return content;
}

std::string readZipEntry(const ProductZipData& product) {
    std::stringstream content(std::ios_base::in | std::ios_base::out);
    const auto source = product.getFileSystemManager()->getFileContentSource(
        product.getEntry(), opc::zqservices::TransformMode::Decoded);
    opc::StreamHelper::copyStreamToStream(source->getInputStream(), content);
    return std::move(content).str();
}

} // namespace

std::string openAndReadFile(const std::u16string& path) {
    logRecord(kSeverityDetail, kReadingFile, path);
    return readPlainFile(path);
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

} // namespace reference::docparser::DocResourceParser
