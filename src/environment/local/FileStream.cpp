#include "environment/PathAndText.hpp"

#include <utility>

#include "environment/local/FileBuffer.hpp"

namespace fl::filesystem {

basic_ifstream<char>::basic_ifstream(const std::u16string& pathname, std::ios_base::openmode mode) {
    auto file = environment::local::openForReading(pathname);
    if (!file) {
        setstate(std::ios_base::failbit);
        return;
    }
    const bool hasSize = file->size.has_value();
    buffer_ = std::make_unique<environment::local::FileBuffer>(*std::move(file));
    std::ios::rdbuf(buffer_.get());
    if (!hasSize)
        setstate(std::ios_base::badbit);
    else if ((mode & std::ios_base::ate) != 0)
        seekg(0, std::ios_base::end);
}

basic_ifstream<char>::~basic_ifstream() = default;

bool basic_ifstream<char>::is_open() const noexcept {
    return buffer_ && buffer_->isOpen();
}

void basic_ifstream<char>::close() {
    if (is_open())
        buffer_->close();
    else
        setstate(std::ios_base::failbit);
}

} // namespace fl::filesystem
