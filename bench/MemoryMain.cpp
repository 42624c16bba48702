// Loads once, as the process of a first load does, and prints how much of the heap the result
// takes.

#include <cstdio>
#include <exception>

#include "Loads.hpp"
#include "support/HeapMonitor.hpp"

int main(int argc, char** argv) {
    if (argc != 6) {
        std::fputs("usage: docparser_bench_memory --load CORPORA KIND CORPUS READER\n", stderr);
        return 2;
    }
    try {
        const bench::PreparedLoad prepared = bench::prepare(argv[2], {argv[3], argv[4], argv[5]});
        const testsupport::HeapPeak heap;
        const bench::Loaded loaded = prepared.run();
        std::printf("heap_bytes %zu\n", heap.heldBytes());
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "docparser_bench_memory: %s\n", failure.what());
        return 1;
    }
}
