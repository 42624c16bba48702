#include "refdoc/terminal/Output.hpp"

#include <cerrno>
#include <cstddef>
#include <iostream>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

#include "refdoc/text/Text.hpp"

namespace refdoc {

void reserveStandardStreams() {
    // Opened for the wrong direction on purpose: reading or writing must still fail.
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (fcntl(stream, F_GETFD) == -1 && errno == EBADF &&
            open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY) == -1)
            throw std::system_error(errno, std::generic_category(), "/dev/null");
}

void writeOutput(std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = write(STDOUT_FILENO, text.data(), text.size());
        if (written >= 0)
            text.remove_prefix(static_cast<std::size_t>(written));
        else if (errno != EINTR)
            throw std::system_error(errno, std::generic_category(), "cannot write the output");
    }
}

void reportError(std::string_view line, std::initializer_list<Lines> further) {
    std::string message = "refdoc: " + printableUtf8(line) + '\n';
    for (const Lines& lines : further)
        for (const std::string& next : lines)
            message += "  " + printableUtf8(next) + '\n';
    std::cerr << message << std::flush;
}

} // namespace refdoc
