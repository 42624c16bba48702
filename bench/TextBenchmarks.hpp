#pragma once

#include <filesystem>

namespace bench {

/// Registers the conversions of JSON texts to UTF-16, beside ICU's own call into a ready buffer,
/// on texts of the corpora.
void registerTexts(const std::filesystem::path& corpora);

} // namespace bench
