#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>

#include <sys/types.h>
#include <unistd.h>

namespace environment::local {

/// Owns an open file of the system; -1 stands for none.
class FileDescriptor {
public:
    explicit FileDescriptor(int number = -1) noexcept : number_(number) {}
    FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&&) = delete;
    ~FileDescriptor() { close(); }

    int get() const noexcept { return number_; }

    void close() noexcept {
        if (number_ >= 0)
            ::close(std::exchange(number_, -1));
    }

private:
    int number_;
};

struct OpenedFile {
    FileDescriptor descriptor;
    /// The size of the file when it was opened, in bytes. All reading goes by this size, even if
    /// the file changes: its holes were judged by it. Nothing for a folder, and for a file with
    /// holes of more than 64 MiB, which would fill the memory with zeros.
    std::optional<off_t> size;
};

/// `pathname` for system calls; nothing when it holds U+0000, which would cut it short.
std::optional<std::string> accessPath(const std::u16string& pathname);

/// Opens a regular file or a folder for reading. Nothing when `pathname` is missing, may not be
/// read or is of another kind. Never waits for a pipe or a device; for a file that another process
/// has leased, until it gives the lease up or the system takes it away, 66 seconds at most.
std::optional<OpenedFile> openForReading(const std::u16string& pathname);

/// Reads once at `position`, again when interrupted, and perhaps less than `capacity`. Negative on
/// failure, as the system call.
ssize_t readAt(int descriptor, char* buffer, std::size_t capacity, off_t position) noexcept;

} // namespace environment::local
