#include "InstalledBenchmarks.hpp"

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "Loads.hpp"
#include "environment/PathAndText.hpp"
#include "reference/docparser/DocResourceParser.hpp"

namespace bench {

namespace {

namespace fs = std::filesystem;

/// The last one, so that a search looks at every name.
std::string productName(std::size_t number) {
    return "product" + std::to_string(number);
}

void writeProducts(const fs::path& root, std::size_t count) {
    fs::create_directories(root);
    std::ofstream file(root / "installedProducts.json");
    for (std::size_t number = 1; number <= count; ++number)
        file << (number == 1 ? "[" : ",") << R"({"shortName":")" << productName(number) << R"("})";
    file << "]";
}

void askLibrary(benchmark::State& state, const fs::path& root, std::size_t count) {
    setLibraryRoot(root, u"en");
    const std::u16string name = fs::path(productName(count)).u16string();
    for ([[maybe_unused]] const auto _ : state) {
        if (!reference::docparser::DocResourceParser::isProductInstalled(name))
            state.SkipWithError("the product is not found");
    }
}

void scan(benchmark::State& state, std::size_t count) {
    std::vector<std::string> names;
    for (std::size_t number = 1; number <= count; ++number)
        names.push_back(productName(number));
    const std::u16string name = fs::path(productName(count)).u16string();
    for ([[maybe_unused]] const auto _ : state)
        benchmark::DoNotOptimize(std::find(names.begin(), names.end(), fl::i18n::to_string(name)));
}

} // namespace

void registerInstalled(const fs::path& folder) {
    for (const std::size_t count : {10U, 100U, 1000U}) {
        const std::string prefix = "installed/" + std::to_string(count);
        const fs::path root = folder / std::to_string(count);
        writeProducts(root, count);
        benchmark::RegisterBenchmark((prefix + "/library").c_str(), askLibrary, root, count)
            ->ThreadRange(1, 2)
            ->UseRealTime();
        benchmark::RegisterBenchmark((prefix + "/scan").c_str(), scan, count)->UseRealTime();
    }
}

} // namespace bench
