#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace environment::local {

/// The name of a folder's entry; nothing for a name that is not UTF-8.
std::optional<std::u16string> utf16Name(const std::filesystem::path& path);

} // namespace environment::local
