#include "TextBenchmarks.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>
#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>
#include <unicode/ustring.h>

#include "reference/docparser/ParsingTools.hpp"

namespace bench {

namespace {

namespace fs = std::filesystem;
namespace json = boost::json;
namespace tools = reference::docparser::DocResourceParser::ParsingTools;

/// The result, two bytes for each byte, fits the first caches.
constexpr std::size_t kTextSize = std::size_t{8} * 1024;

bool isAscii(char byte) {
    return byte > 0 && byte < 0x7F;
}

/// The first `size` bytes, or a few less so that no character is cut.
std::string_view leading(std::string_view text, std::size_t size) {
    size = std::min(size, text.size());
    while (size < text.size() && (text[size] & 0xC0) == 0x80)
        --size;
    return text.substr(0, size);
}

/// Texts of a resource file one after another, up to `kTextSize` bytes; with or without those bytes
/// that are not ASCII.
std::string collectText(const fs::path& file, bool onlyAscii) {
    std::ifstream stream(file, std::ios_base::binary);
    const std::string content(std::istreambuf_iterator<char>(stream), {});
    const json::value document = json::parse(content);
    std::string text;
    for (const json::value& item : document.at("refItems").as_array())
        for (const char* member : {"refpurpose", "description"})
            if (const json::value* value = item.as_object().if_contains(member))
                for (const char byte : value->as_string())
                    if (!onlyAscii || isAscii(byte))
                        text += byte;
    if (text.size() < kTextSize)
        throw std::runtime_error("too little text in " + file.string());
    return std::string(leading(text, kTextSize));
}

/// Two texts in turn.
std::string mix(std::string_view first, std::string_view second) {
    constexpr std::size_t kPiece = 100;
    std::string mixed;
    while (mixed.size() < kTextSize) {
        for (std::string_view* text : {&first, &second}) {
            const std::string_view piece = leading(*text, kPiece);
            mixed += piece;
            text->remove_prefix(piece.size());
        }
    }
    return mixed;
}

void convertWithLibrary(benchmark::State& state, const std::string& text) {
    const json::value value(text);
    for ([[maybe_unused]] const auto _ : state)
        benchmark::DoNotOptimize(tools::getFluString(value, tools::StringParsingType::Utf8));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void convertWithIcu(benchmark::State& state, const std::string& text) {
    std::vector<char16_t> units(text.size());
    const auto size = static_cast<std::int32_t>(text.size());
    for ([[maybe_unused]] const auto _ : state) {
        std::int32_t count = 0;
        UErrorCode status = U_ZERO_ERROR;
        u_strFromUTF8WithSub(units.data(), size, &count, text.data(), size, 0xFFFD, nullptr,
                             &status);
        benchmark::DoNotOptimize(units.data());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

} // namespace

void registerTexts(const fs::path& corpora) {
    const fs::path folder = corpora / "plain/docCatalog/referenceapi";
    const std::string ascii = collectText(folder / "libc.json", true);
    const std::string japanese = collectText(folder / "libc_ja.json", false);
    const std::vector<std::pair<std::string, std::string>> texts{
        {"ascii", ascii},
        {"latin", collectText(folder / "libc_fr.json", false)},
        {"japanese", japanese},
        {"mixed", mix(japanese, ascii)}};
    for (const auto& [kind, text] : texts) {
        benchmark::RegisterBenchmark(("text/" + kind + "/library").c_str(), convertWithLibrary,
                                     text);
        benchmark::RegisterBenchmark(("text/" + kind + "/icu").c_str(), convertWithIcu, text);
    }
}

} // namespace bench
