#include "environment/PathAndText.hpp"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

#include "environment/local/FolderNames.hpp"
#include "environment/local/OpenedFile.hpp"

namespace fl::filesystem {

pattern_string_context::~pattern_string_context() = default;

korvel_pattern_string_context::korvel_pattern_string_context(std::u16string text,
                                                             std::u16string pattern)
    : text_(std::move(text)), pattern_(std::move(pattern)) {}

const std::u16string& korvel_pattern_string_context::getPattern() const noexcept {
    return pattern_;
}

upath_directory_entry::upath_directory_entry(const std::u16string& folder, std::u16string filename)
    : filename_(std::move(filename)), fullPathname_(folder) {
    detail::concatenate_pathname(fullPathname_, filename_, true);
}

namespace detail {

using environment::local::addNames;
using environment::local::EntryKind;

korvel_pattern_string_context
generate_pattern_from_filename(const std::u16string& text,
                               const korvel_pattern_string_generator& /*generator*/) {
    return {text, text};
}

upath_directory_iterator_impl::upath_directory_iterator_impl(const std::u16string& nativeFolder,
                                                             const pattern_string_context& pattern,
                                                             bool /*cleanUp*/,
                                                             initialization_mode /*mode*/,
                                                             bool /*recursive*/)
    : folder_(nativeFolder) {
    const std::optional<std::string> path = environment::local::accessPath(nativeFolder);
    if (!path)
        return;
    failure_ = addNames(*path, i18n::to_string(pattern.getPattern()), EntryKind::File, names_);
    // Descending, so that the next name is the last one.
    std::sort(names_.begin(), names_.end(), std::greater<>());
    if (failure_ == std::errc::no_such_file_or_directory)
        failure_.clear();
    increment();
}

void upath_directory_iterator_impl::increment() {
    entry_.reset();
    if (names_.empty()) {
        if (failure_)
            throw std::filesystem::filesystem_error(
                "folder cannot be listed", i18n::to_string(folder_), std::exchange(failure_, {}));
        return;
    }
    entry_.emplace(folder_, std::move(names_.back()));
    names_.pop_back();
}

} // namespace detail

} // namespace fl::filesystem
