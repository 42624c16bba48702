#pragma once

#include <cstddef>
#include <ios>
#include <memory>
#include <streambuf>
#include <utility>

#include "environment/local/OpenedFile.hpp"

namespace environment::local {

/// An open file as streams read it. Seeking costs no system call, and neither does finding the end:
/// only what the file had when it was opened is read. A request for much, or for the rest of the
/// file, is read straight into its target. A read that fails throws `std::ios_base::failure`.
class FileBuffer final : public std::streambuf {
public:
    explicit FileBuffer(OpenedFile file) noexcept : file_(std::move(file)) {}

    bool isOpen() const noexcept { return file_.descriptor.get() >= 0; }
    /// Nothing can be read from then on.
    void close() noexcept;

protected:
    int_type underflow() override;
    int_type pbackfail(int_type character) override;
    std::streamsize showmanyc() override;
    std::streamsize xsgetn(char* target, std::streamsize count) override;
    pos_type seekoff(off_type offset, std::ios_base::seekdir from,
                     std::ios_base::openmode) override;
    pos_type seekpos(pos_type position, std::ios_base::openmode) override;

private:
    std::streamsize windowed() const noexcept { return egptr() - gptr(); }
    off_type position() const noexcept { return windowEnd_ - windowed(); }
    /// How many bytes the file has behind the window.
    off_type left() const noexcept;
    /// Empties the window.
    void moveTo(off_type position) noexcept;
    std::streamsize takeFromWindow(char* target, std::streamsize count) noexcept;
    /// Some of what follows, through the window when that is little; 0 at the end of the file.
    std::streamsize readMore(char* target, std::streamsize wanted);
    std::streamsize readBehindWindow(char* target, std::streamsize capacity);

    OpenedFile file_;
    std::unique_ptr<char[]> window_; // the bytes from eback() to egptr()
    off_type windowEnd_ = 0;         // the place of egptr() in the file
};

} // namespace environment::local
