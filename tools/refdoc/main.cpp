#include <clocale>

#include "refdoc/commands/CommandLine.hpp"

int main(int argc, char** argv) {
    std::setlocale(LC_ALL, "");
    return refdoc::runCommandLine(argc, argv);
}
