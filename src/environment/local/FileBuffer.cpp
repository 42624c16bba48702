#include "environment/local/FileBuffer.hpp"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <limits>
#include <system_error>

namespace environment::local {

namespace {

constexpr std::streamsize kWindowSize = 8192;

} // namespace

void FileBuffer::close() noexcept {
    file_.descriptor.close();
    file_.size.reset();
    moveTo(0);
}

std::streambuf::int_type FileBuffer::underflow() {
    if (windowed() == 0) {
        if (!window_)
            window_ = std::make_unique<char[]>(kWindowSize);
        const std::streamsize count = readBehindWindow(window_.get(), kWindowSize);
        if (count == 0)
            return traits_type::eof();
        setg(window_.get(), window_.get(), window_.get() + count);
    }
    return traits_type::to_int_type(*gptr());
}

/// Called when the window has no previous character, or another one than is put back.
std::streambuf::int_type FileBuffer::pbackfail(int_type character) {
    const off_type former = position();
    if (former == 0)
        return traits_type::eof();
    moveTo(former - 1);
    const int_type previous = underflow();
    const bool isWanted = traits_type::eq_int_type(character, traits_type::eof()) ||
                          traits_type::eq_int_type(character, previous);
    // The file may have become shorter meanwhile.
    if (isWanted && !traits_type::eq_int_type(previous, traits_type::eof()))
        return previous;
    moveTo(former);
    return traits_type::eof();
}

std::streamsize FileBuffer::showmanyc() {
    return left() == 0 ? -1 : left();
}

std::streamsize FileBuffer::xsgetn(char* target, std::streamsize count) {
    std::streamsize done = takeFromWindow(target, count);
    while (done < count && left() > 0) {
        const std::streamsize read = readMore(target + done, count - done);
        if (read == 0)
            break;
        done += read;
    }
    return done;
}

std::streamsize FileBuffer::readMore(char* target, std::streamsize wanted) {
    if (wanted >= std::min<off_type>(kWindowSize, left())) {
        moveTo(position());
        return readBehindWindow(target, wanted);
    }
    if (traits_type::eq_int_type(underflow(), traits_type::eof()))
        return 0;
    return takeFromWindow(target, wanted);
}

std::streambuf::pos_type FileBuffer::seekoff(off_type offset, std::ios_base::seekdir from,
                                             std::ios_base::openmode mode) {
    off_type base = 0;
    if (from == std::ios_base::cur)
        base = position();
    else if (from == std::ios_base::end)
        base = file_.size.value_or(0);
    if (offset > std::numeric_limits<off_type>::max() - base)
        return pos_type(off_type(-1));
    return seekpos(pos_type(base + offset), mode);
}

std::streambuf::pos_type FileBuffer::seekpos(pos_type position, std::ios_base::openmode) {
    const off_type wanted = position;
    if (!file_.size || wanted < 0)
        return pos_type(off_type(-1));
    const off_type back = windowEnd_ - wanted;
    if (back >= 0 && back <= egptr() - eback())
        setg(eback(), egptr() - back, egptr());
    else
        moveTo(wanted);
    return position;
}

std::streambuf::off_type FileBuffer::left() const noexcept {
    return std::max<off_type>(0, file_.size.value_or(0) - windowEnd_);
}

void FileBuffer::moveTo(off_type position) noexcept {
    setg(nullptr, nullptr, nullptr);
    windowEnd_ = position;
}

std::streamsize FileBuffer::takeFromWindow(char* target, std::streamsize count) noexcept {
    const std::streamsize taken = std::min(count, windowed());
    if (taken > 0)
        std::memcpy(target, gptr(), static_cast<std::size_t>(taken));
    setg(eback(), gptr() + taken, egptr());
    return taken;
}

std::streamsize FileBuffer::readBehindWindow(char* target, std::streamsize capacity) {
    const auto wanted = static_cast<std::size_t>(std::min<off_type>(capacity, left()));
    const ssize_t count =
        wanted == 0 ? 0 : readAt(file_.descriptor.get(), target, wanted, windowEnd_);
    if (count < 0)
        throw std::ios_base::failure("file cannot be read", {errno, std::generic_category()});
    windowEnd_ += count;
    return count;
}

} // namespace environment::local
