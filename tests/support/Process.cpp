#include "support/Process.hpp"

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <system_error>

#include <fcntl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#if __has_include(<pty.h>)
#include <pty.h>
#else
#include <util.h>
#endif

namespace testsupport {

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const noexcept { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

File makeTemporaryFile() {
    File file(std::tmpfile());
    if (!file)
        throw std::system_error(errno, std::generic_category(), "tmpfile");
    return file;
}

std::string contentOf(const File& file) {
    std::rewind(file.get());
    std::string content;
    for (int byte = std::fgetc(file.get()); byte != EOF; byte = std::fgetc(file.get()))
        content += static_cast<char>(byte);
    return content;
}

/// Output is passed on as it is.
termios lineByLineWithoutEcho() {
    termios settings{};
    settings.c_iflag = ICRNL;
    settings.c_cflag = CS8 | CREAD;
    settings.c_lflag = ICANON | ISIG;
    constexpr cc_t controlD = 4;
    settings.c_cc[VEOF] = controlD;
    return settings;
}

void type(int terminal, const std::string& text) {
    if (write(terminal, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
        throw std::system_error(errno, std::generic_category(), "write to the terminal");
}

int exitCodeOf(pid_t process) {
    int status = 0;
    while (waitpid(process, &status, 0) == -1 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

[[noreturn]] void become(const ProcessCall& call) {
    for (const auto& [name, value] : call.environment) {
        if (value)
            setenv(name.c_str(), value->c_str(), 1);
        else
            unsetenv(name.c_str());
    }
    std::vector<std::string> words{call.program};
    words.insert(words.end(), call.arguments.begin(), call.arguments.end());
    std::vector<char*> pointers;
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    execv(call.program.c_str(), pointers.data());
    _exit(125);
}

void redirectOutput(const ProcessCall& call, int capture) {
    if (!call.standardOutput)
        dup2(capture, STDOUT_FILENO);
    else if (call.standardOutput->empty())
        close(STDOUT_FILENO);
    else
        dup2(open(call.standardOutput->c_str(), O_WRONLY | O_CLOEXEC), STDOUT_FILENO);
}

/// Reads until the other side has closed the terminal, which Linux reports as an error.
std::string readTerminal(int terminal) {
    std::string text;
    char buffer[4096];
    for (ssize_t count = read(terminal, buffer, sizeof buffer); count > 0 || errno == EINTR;
         count = read(terminal, buffer, sizeof buffer))
        if (count > 0)
            text.append(buffer, static_cast<std::size_t>(count));
    return text;
}

} // namespace

ProcessResult run(const ProcessCall& call) {
    const File output = makeTemporaryFile();
    const File errors = makeTemporaryFile();
    const pid_t process = fork();
    if (process == -1)
        throw std::system_error(errno, std::generic_category(), "fork");
    if (process == 0) {
        dup2(open("/dev/null", O_RDONLY | O_CLOEXEC), STDIN_FILENO);
        redirectOutput(call, fileno(output.get()));
        dup2(fileno(errors.get()), STDERR_FILENO);
        become(call);
    }
    const int exitCode = exitCodeOf(process);
    return {exitCode, contentOf(output), contentOf(errors)};
}

ProcessResult runOnTerminal(const ProcessCall& call, unsigned short columns) {
    int terminal = -1;
    const winsize window{24, columns, 0, 0};
    const termios settings = lineByLineWithoutEcho();
    const pid_t process = forkpty(&terminal, nullptr, &settings, &window);
    if (process == -1)
        throw std::system_error(errno, std::generic_category(), "forkpty");
    if (process == 0)
        become(call);
    type(terminal, call.typed);
    const std::string shown = readTerminal(terminal);
    close(terminal);
    return {exitCodeOf(process), shown, {}};
}

} // namespace testsupport
