#include "refdoc/terminal/Pager.hpp"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "refdoc/terminal/Output.hpp"

// POSIX leaves this declaration to programs; only some systems have it in a header.
extern char** environ; // NOLINT(readability-redundant-declaration)

namespace refdoc {

namespace {

/// The exit codes of a shell whose command cannot be run or is not found.
constexpr int kNotRunnable = 126;
constexpr int kNotFound = 127;

/// Not inherited by programs that are started.
class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) { fcntl(number, F_SETFD, FD_CLOEXEC); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { close(); }

    int number() const { return number_; }
    void close() {
        if (number_ >= 0)
            ::close(std::exchange(number_, -1));
    }

private:
    int number_;
};

/// While the pager runs, neither the interrupt keys nor a pager that quits before reading
/// everything must end this process.
class IgnoredSignals {
public:
    IgnoredSignals() {
        struct sigaction ignore {};
        ignore.sa_handler = SIG_IGN;
        for (std::size_t index = 0; index < kSignals.size(); ++index)
            sigaction(kSignals[index], &ignore, &previous_[index]);
    }
    IgnoredSignals(const IgnoredSignals&) = delete;
    IgnoredSignals& operator=(const IgnoredSignals&) = delete;
    ~IgnoredSignals() {
        for (std::size_t index = 0; index < kSignals.size(); ++index)
            sigaction(kSignals[index], &previous_[index], nullptr);
    }

    static constexpr std::array kSignals{SIGINT, SIGQUIT, SIGPIPE};

private:
    std::array<struct sigaction, kSignals.size()> previous_{};
};

/// Sets up a child process with `input` as its standard input and default signal handling.
class SpawnSettings {
public:
    explicit SpawnSettings(int input) {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_adddup2(&actions_, input, STDIN_FILENO);
        sigset_t defaults;
        sigemptyset(&defaults);
        for (const int signal : IgnoredSignals::kSignals)
            sigaddset(&defaults, signal);
        posix_spawnattr_init(&attributes_);
        posix_spawnattr_setsigdefault(&attributes_, &defaults);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;
    ~SpawnSettings() {
        posix_spawn_file_actions_destroy(&actions_);
        posix_spawnattr_destroy(&attributes_);
    }

    std::optional<pid_t> startShell(std::string command) const {
        std::string shell = "sh";
        std::string option = "-c";
        char* const arguments[] = {shell.data(), option.data(), command.data(), nullptr};
        pid_t process = 0;
        if (posix_spawn(&process, "/bin/sh", &actions_, &attributes_, arguments, environ) != 0)
            return std::nullopt;
        return process;
    }

private:
    posix_spawn_file_actions_t actions_{};
    posix_spawnattr_t attributes_{};
};

std::string pagerCommand() {
    for (const char* name : {"MANPAGER", "PAGER"})
        if (const char* command = std::getenv(name))
            return command;
    return "for pager in pager less more; do command -v $pager >/dev/null && exec $pager; done; "
           "exec cat";
}

/// Makes `less` show styles and UTF-8, and print at once what fits on the screen, unless the user
/// has set it up otherwise.
void setPagerDefaults() {
    constexpr int keepExisting = 0;
    setenv("LESS", "-FRi", keepExisting);
    setenv("LESSCHARSET", "utf-8", keepExisting);
}

void feed(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = write(descriptor, text.data(), text.size());
        if (written >= 0)
            text.remove_prefix(static_cast<std::size_t>(written));
        else if (errno != EINTR)
            return;
    }
}

int waitForExit(pid_t process) {
    int status = 0;
    while (waitpid(process, &status, 0) == -1 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 0;
}

/// Returns false if the pager did not run.
bool runPager(const std::string& command, std::string_view text) {
    int ends[2];
    if (pipe(ends) != 0)
        return false;
    Descriptor readEnd(ends[0]);
    Descriptor writeEnd(ends[1]);
    setPagerDefaults();
    const IgnoredSignals ignored;
    const std::optional<pid_t> process = SpawnSettings(readEnd.number()).startShell(command);
    readEnd.close();
    if (!process)
        return false;
    feed(writeEnd.number(), text);
    writeEnd.close();
    const int exitCode = waitForExit(*process);
    return exitCode != kNotRunnable && exitCode != kNotFound;
}

} // namespace

void showText(std::string_view text, const Terminal& terminal) {
    const std::string command = pagerCommand();
    const bool paged = terminal.interactive && !command.empty() && command != "cat";
    if (!paged || !runPager(command, text))
        writeOutput(text);
}

} // namespace refdoc
