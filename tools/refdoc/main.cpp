#include <clocale>

#include "refdoc/CommandLine.hpp"

int main(int argc, char** argv) {
    std::setlocale(LC_ALL, "");
    return refdoc::runCommandLine(argc, argv);
}
