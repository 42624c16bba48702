// Runs a target over every file of the given folders, without the fuzzing engine.

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <system_error>
#include <vector>

#include <unistd.h>

#include "Support.hpp"

namespace {

namespace fs = std::filesystem;

constexpr unsigned kSecondsPerInput = 60;

std::vector<fs::path> filesOf(const fs::path& folder) {
    std::vector<fs::path> files;
    std::error_code isMissing; // a missing folder counts as empty
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, isMissing))
        if (entry.is_regular_file())
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

/// A failure ends the process, so the name of each file is printed before it runs.
bool replay(const fs::path& path) {
    std::cout << path.string() << std::endl;
    std::ifstream file(path, std::ios_base::binary);
    const std::string input{std::istreambuf_iterator<char>(file), {}};
    ::alarm(kSecondsPerInput);
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
    ::alarm(0);
    return file.is_open();
}

} // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount == 1)
        std::cerr << "usage: " << arguments[0] << " FOLDER...\n";
    bool isReplayed = argumentCount > 1;
    for (int argument = 1; argument < argumentCount; ++argument) {
        const std::vector<fs::path> files = filesOf(arguments[argument]);
        isReplayed =
            isReplayed && !files.empty() && std::all_of(files.begin(), files.end(), replay);
        std::cout << files.size() << " files in " << arguments[argument] << '\n';
    }
    return isReplayed ? EXIT_SUCCESS : EXIT_FAILURE;
}
