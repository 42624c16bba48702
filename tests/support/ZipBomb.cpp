#include "support/ZipBomb.hpp"

#include <stdexcept>

#include <zlib.h>

namespace testsupport {

namespace {

constexpr std::uint64_t kBlockSize = 1 << 20;

/// Raw deflate data of `kBlockSize` blanks. It can be repeated: it neither refers to what precedes
/// it nor ends the stream.
std::string compressBlock() {
    std::string blanks(kBlockSize, ' ');
    std::string block(kBlockSize, '\0');
    z_stream stream{};
    if (deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, -MAX_WBITS, MAX_MEM_LEVEL,
                     Z_DEFAULT_STRATEGY) != Z_OK)
        throw std::runtime_error("deflateInit2");
    stream.next_in = reinterpret_cast<Bytef*>(blanks.data());
    stream.avail_in = static_cast<uInt>(blanks.size());
    stream.next_out = reinterpret_cast<Bytef*>(block.data());
    stream.avail_out = static_cast<uInt>(block.size());
    const int result = deflate(&stream, Z_FULL_FLUSH);
    block.resize(stream.total_out);
    deflateEnd(&stream);
    if (result != Z_OK)
        throw std::runtime_error("deflate");
    return block;
}

} // namespace

ZipBytes makeZipBomb(const std::string& name, std::uint64_t size, std::uint32_t declaredSize) {
    const std::string block = compressBlock();
    std::string content;
    for (std::uint64_t done = 0; done < size; done += kBlockSize)
        content += block;
    // The last block is empty.
    content += std::string("\3\0", 2);
    return ZipFile()
        .add(name, content, ZipMethod::Stored)
        .build()
        .setMethod(0, Z_DEFLATED)
        .setDeclaredSize(0, declaredSize);
}

ZipBytes overlappingEntries(const std::string& content, std::size_t count) {
    ZipFile file;
    for (std::size_t entry = 0; entry < count; ++entry)
        file.add(std::to_string(entry) + ".json", entry == 0 ? content : "");
    ZipBytes package = file.build();
    for (std::size_t entry = 1; entry < count; ++entry)
        package.shareContent(entry, 0);
    return package;
}

} // namespace testsupport
