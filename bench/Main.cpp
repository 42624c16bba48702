// The benchmarks of the library. With --load it is the process of one first load.

#include <cstdio>
#include <exception>
#include <filesystem>
#include <string_view>

#include <benchmark/benchmark.h>

#include "Agreement.hpp"
#include "InstalledBenchmarks.hpp"
#include "LoadBenchmarks.hpp"
#include "TextBenchmarks.hpp"

namespace {

constexpr const char* kUsage =
    "usage: docparser_bench --corpora FOLDER [OPTIONS OF GOOGLE BENCHMARK]\n"
    "       docparser_bench --load FOLDER KIND CORPUS READER\n"
    "FOLDER is what bench/make_corpora made.\n";

int runBenchmarks(const std::filesystem::path& corpora, int argc, char** argv) {
    bench::splitCorpora(corpora);
    bench::requireAgreement(corpora);
    bench::registerLoads(corpora);
    bench::registerTexts(corpora);
    bench::registerInstalled(corpora.parent_path() / "installed");
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

int run(int argc, char** argv) {
    const std::string_view command = argc < 3 ? "" : argv[1];
    if (command == "--load" && argc == 6) {
        bench::loadOnce(argv[2], {argv[3], argv[4], argv[5]});
        return 0;
    }
    if (command != "--corpora") {
        std::fputs(kUsage, stderr);
        return 2;
    }
    const std::filesystem::path corpora = argv[2];
    argv[2] = argv[0];
    return runBenchmarks(corpora, argc - 2, argv + 2);
}

} // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "docparser_bench: %s\n", failure.what());
        return 1;
    }
}
