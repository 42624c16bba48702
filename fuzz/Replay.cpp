// Runs a target over every file of the folders given, without the fuzzing engine.

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <new>
#include <string>
#include <system_error>
#include <vector>

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Support.hpp"

namespace {

namespace fs = std::filesystem;

constexpr unsigned kSecondsPerInput = 60;

using Counter = std::atomic<std::size_t>;
static_assert(Counter::is_always_lock_free);

std::vector<fs::path> filesOf(const fs::path& folder) {
    std::vector<fs::path> files;
    std::error_code isMissing; // which counts as empty
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, isMissing))
        if (entry.is_regular_file())
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

std::string contentOf(const fs::path& path) {
    std::ifstream file(path, std::ios_base::binary);
    if (!file)
        throw fs::filesystem_error("cannot be read", path, std::error_code());
    return {std::istreambuf_iterator<char>(file), {}};
}

/// A counter that survives the end of the process that counts.
Counter& sharedCounter() {
    void* const memory =
        ::mmap(nullptr, sizeof(Counter), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED)
        throw std::bad_alloc();
    return *new (memory) Counter(0);
}

void replay(const std::vector<fs::path>& files, Counter& done) {
    for (const fs::path& file : files) {
        const std::string input = contentOf(file);
        ::alarm(kSecondsPerInput);
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
        ++done;
    }
    ::alarm(0);
}

/// The inputs run in a child process, so that the parent can name the one at which it ended, in
/// whatever way that was: an abort, a sanitizer's report or the alarm.
bool replayInChild(const std::vector<fs::path>& files) {
    Counter& done = sharedCounter();
    const pid_t child = ::fork();
    if (child == 0) {
        replay(files, done);
        std::exit(EXIT_SUCCESS);
    }
    int status = 0;
    if (child < 0 || ::waitpid(child, &status, 0) != child)
        return false;
    if (WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS)
        return true;
    if (done < files.size())
        std::cerr << "failed while replaying " << files[done].string() << '\n';
    else
        std::cerr << "failed after the last file\n";
    return false;
}

} // namespace

int main(int argumentCount, char** arguments) {
    const std::vector<std::string> folders(arguments + 1, arguments + argumentCount);
    std::vector<fs::path> files;
    for (const std::string& folder : folders) {
        const std::vector<fs::path> inputs = filesOf(folder);
        if (inputs.empty()) {
            std::cerr << folder << " holds no files\n";
            return EXIT_FAILURE;
        }
        files.insert(files.end(), inputs.begin(), inputs.end());
    }
    if (files.empty()) {
        std::cerr << "usage: " << arguments[0] << " FOLDER...\n";
        return EXIT_FAILURE;
    }
    if (!replayInChild(files))
        return EXIT_FAILURE;
    std::cout << files.size() << " files replayed\n";
    return EXIT_SUCCESS;
}
