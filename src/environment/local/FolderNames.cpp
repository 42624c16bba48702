#include "environment/local/FolderNames.hpp"

#include <stdexcept>

#include "environment/PathAndText.hpp"

namespace environment::local {

std::optional<std::u16string> utf16Name(const std::filesystem::path& path) {
    static const fl::i18n::codecvt_string_to_ustring decoder("utf8", false);
    const std::string name = path.filename().string();
    try {
        return decoder.convert(name.data(), name.size());
    } catch (const std::range_error&) {
        return std::nullopt;
    }
}

} // namespace environment::local
