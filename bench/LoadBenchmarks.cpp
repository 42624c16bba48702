#include "LoadBenchmarks.hpp"

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>

#include <benchmark/benchmark.h>

namespace bench {

namespace {

namespace fs = std::filesystem;

std::string nameOf(const Load& load) {
    return load.kind + "/" + load.corpus + "/" + load.reader;
}

/// What one of this project's programs prints about a load: names and numbers in turn.
std::map<std::string, double> ask(const std::string& program, const fs::path& corpora,
                                  const Load& load) {
    const std::string command = fs::read_symlink("/proc/self/exe").parent_path() / program;
    const std::string call = "'" + command + "' --load '" + corpora.string() + "' " + load.kind +
                             " " + load.corpus + " " + load.reader;
    FILE* const pipe = ::popen(call.c_str(), "r");
    std::array<char, 512> line{};
    const bool isRead = pipe != nullptr && std::fgets(line.data(), line.size(), pipe) != nullptr;
    if (pipe == nullptr || ::pclose(pipe) != 0 || !isRead)
        throw std::runtime_error("failed: " + call);
    std::map<std::string, double> answers;
    std::istringstream words(line.data());
    std::string name;
    for (double value = 0; words >> name >> value;)
        answers[name] = value;
    return answers;
}

/// The part of programs, libraries and other files that is in memory.
std::size_t residentFileBytes() {
    std::ifstream sizes("/proc/self/statm");
    std::size_t all = 0;
    std::size_t resident = 0;
    std::size_t ofFiles = 0;
    sizes >> all >> resident >> ofFiles;
    return ofFiles * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
}

/// The peak of the memory that this process shares with no file.
std::size_t peakResidentBytes() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return static_cast<std::size_t>(usage.ru_maxrss) * 1024 - residentFileBytes();
}

/// The allocated bytes, with the allocator's own headers.
std::size_t usedHeapBytes() {
    const auto use = ::mallinfo2();
    return use.uordblks + use.hblkhd;
}

/// All readers that build the records of a corpus must give as many.
bool agreesOnRecords(const Load& load, double records) {
    static std::map<std::string, double> known;
    if (load.reader == "parse" || load.kind == "inflate" || load.kind == "overlay")
        return true;
    return known.try_emplace(load.kind + "/" + load.corpus, records).first->second == records;
}

void registerFirstLoad(const fs::path& corpora, const Load& load) {
    const auto run = [corpora, load](benchmark::State& state) {
        std::map<std::string, double> answers;
        for ([[maybe_unused]] const auto _ : state) {
            answers = ask("docparser_bench", corpora, load);
            state.SetIterationTime(answers.at("ns") * 1e-9);
        }
        if (!agreesOnRecords(load, answers.at("records")))
            state.SkipWithError("another number of records than another reader");
        for (const auto& [name, value] : answers)
            if (name != "ns")
                state.counters[name] = value;
    };
    benchmark::RegisterBenchmark(("first_load/" + nameOf(load)).c_str(), run)
        ->UseManualTime()
        ->Iterations(1)
        ->Unit(benchmark::kMillisecond);
}

/// Watching the heap slows a load down, so a program of its own does it.
void registerHeapUse(const fs::path& corpora, const Load& load) {
    const auto run = [corpora, load](benchmark::State& state) {
        for ([[maybe_unused]] const auto _ : state)
            state.counters["heap_bytes"] =
                ask("docparser_bench_memory", corpora, load).at("heap_bytes");
    };
    benchmark::RegisterBenchmark(("heap/" + nameOf(load)).c_str(), run)->Iterations(1);
}

void registerReload(const fs::path& corpora, const Load& load, int threads) {
    const auto run = [corpora, load](benchmark::State& state) {
        const PreparedLoad prepared = prepare(corpora, load);
        for ([[maybe_unused]] const auto _ : state)
            benchmark::DoNotOptimize(prepared.run());
        state.counters["bytes"] = benchmark::Counter(static_cast<double>(prepared.bytes),
                                                     benchmark::Counter::kAvgThreads);
    };
    benchmark::RegisterBenchmark(("reload/" + nameOf(load)).c_str(), run)
        ->UseRealTime()
        ->Threads(threads)
        ->MinTime(0.1)
        ->Unit(benchmark::kMillisecond);
}

using Register = void (*)(const fs::path& corpora, const Load& load);

void registerAll(Register add, const fs::path& corpora, const std::string& kind,
                 const std::vector<std::string>& corpusNames,
                 const std::vector<std::string>& readers) {
    for (const std::string& corpus : corpusNames)
        for (const std::string& reader : readers)
            add(corpora, {kind, corpus, reader});
}

void registerReloadOnOneThread(const fs::path& corpora, const Load& load) {
    registerReload(corpora, load, 1);
}

} // namespace

void registerLoads(const fs::path& corpora) {
    const std::vector<std::string> packed{"packages", "one_package"};
    const std::vector<std::string> folders{"plain", "small_files"};
    registerAll(registerFirstLoad, corpora, "lookup",
                {"plain", "small_files", "products4", "products16", "size4", "size16"}, kReaders);
    registerAll(registerFirstLoad, corpora, "lookup", folders, {"program"});
    registerAll(registerFirstLoad, corpora, "lookup", packed, {"library"});
    registerAll(registerFirstLoad, corpora, "inflate", packed, {"libzip", "libdeflate"});
    registerAll(registerFirstLoad, corpora, "reference", {"all", "libc", "libc_x4", "libc_x16"},
                kReaders);
    registerAll(registerFirstLoad, corpora, "overlay", {"de", "fr", "ja"}, {"library", "sum"});
    registerAll(registerHeapUse, corpora, "lookup", {"plain"}, kReaders);
    registerAll(registerHeapUse, corpora, "reference", {"all"}, kReaders);
    registerAll(registerReloadOnOneThread, corpora, "lookup", folders, kReaders);
    registerAll(registerReloadOnOneThread, corpora, "lookup", folders, {"program"});
    registerAll(registerReloadOnOneThread, corpora, "lookup", packed, {"library"});
    registerAll(registerReloadOnOneThread, corpora, "reference", {"all"}, kReaders);
    registerAll(registerReloadOnOneThread, corpora, "overlay", {"ja"}, {"library", "sum"});
    for (const char* reader : {"library", "yardstick"}) {
        registerReload(corpora, {"lookup", "plain", reader}, 2);
        registerReload(corpora, {"reference", "all", reader}, 2);
    }
}

void loadOnce(const fs::path& corpora, const Load& load) {
    const PreparedLoad prepared = prepare(corpora, load);
    const std::size_t residentBefore = peakResidentBytes();
    const std::size_t usedBefore = usedHeapBytes();
    const auto begin = std::chrono::steady_clock::now();
    const Loaded loaded = prepared.run();
    const auto end = std::chrono::steady_clock::now();
    const std::size_t resident = peakResidentBytes() - residentBefore;
    std::printf("ns %lld records %zu bytes %zu largest_file %zu peak_resident %zu "
                "held_bytes %zu\n",
                static_cast<long long>(std::chrono::nanoseconds(end - begin).count()),
                loaded.countRecords(), prepared.bytes, prepared.largestFile, resident,
                usedHeapBytes() - usedBefore);
    std::fflush(stdout);
    std::_Exit(0); // freeing what was loaded would only take time
}

} // namespace bench
