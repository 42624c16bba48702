#include <array>
#include <cstdio>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

namespace reference::docparser {
namespace {

struct Pipe {
    void operator()(std::FILE* pipe) const { ::pclose(pipe); }
};

std::string outputOf(const std::string& command) {
    const std::unique_ptr<std::FILE, Pipe> pipe(::popen(command.c_str(), "r"));
    std::string output;
    std::array<char, 4096> buffer;
    while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), pipe.get()))
        output.append(buffer.data(), count);
    return output;
}

// "reference::docparser::x[abi:cxx11](int) const" is named "x".
std::string plainName(const std::string& symbol) {
    constexpr std::string_view kNamespace = "reference::docparser::";
    const std::string name = symbol.substr(0, symbol.find_first_of("[("));
    return name.starts_with(kNamespace) ? name.substr(kNamespace.size()) : name;
}

// The library's own symbols are strong ones; weak ones come of templates and inline functions of
// others, which are everywhere the same.
std::set<std::string> exportedNames() {
    std::istringstream lines(
        outputOf(DOCPARSER_NM " --dynamic --demangle --defined-only " DOCPARSER_LIBRARY));
    std::set<std::string> names;
    std::string address, kind, symbol;
    while (lines >> address >> kind && std::getline(lines >> std::ws, symbol)) {
        const bool isWeak = kind == "W" || kind == "V" || kind == "u";
        const bool isOfCompiler = symbol.starts_with("__") ||
                                  symbol.starts_with("non-virtual thunk") ||
                                  symbol.ends_with(" for reference::docparser::DocParserException");
        if (!isWeak && !isOfCompiler)
            names.insert(plainName(symbol));
    }
    return names;
}

TEST(LibraryTest, ExportsOnlyWhatIsMeantForOthers) {
    const std::string records = "DocParserException::DocParserException "
                                "DocParserException::operator= DocParserException::clone "
                                "DocParserException::rethrow DocParserException::what "
                                "DocParserException::~DocParserException "
                                "ProductData::ProductData ProductData::getName "
                                "ProductData::isNonEnglishLocale ProductPathData::ProductPathData "
                                "ProductPathData::getFullPath ProductZipData::ProductZipData "
                                "ProductZipData::getEntry ProductZipData::getFileSystemManager "
                                "RefItem::RefItem ";
    const std::string services =
        "ReferenceRoots::ReferenceRoots getReferenceRoots setReferenceRoot "
        "restoreDefaultSettings clearSupportPackageCache openAndReadFile "
        "isValidFilename getResourceFile setTestProducts getAllProducts getTopLevelProducts "
        "getHardwareSupportPackages isProductInstalled getResourceLookupFiles";
    const std::string tools = "kEnglishLocale kJsonExt kZipExt kDotJsonExt kDotZipExt "
                              "kLocaleSeparator getFluString getFluStringWithFallback getJsonArray "
                              "getHeaderInfo getSupportedDocLocales getCurrentLocale";
    std::set<std::string> intended;
    for (const auto& [scope, names] :
         {std::pair("", records), std::pair("DocResourceParser::", services),
          std::pair("DocResourceParser::ParsingTools::", tools)}) {
        std::istringstream words(names);
        for (std::string name; words >> name;)
            intended.insert(scope + name);
    }
    EXPECT_EQ(exportedNames(), intended);
}

} // namespace
} // namespace reference::docparser
