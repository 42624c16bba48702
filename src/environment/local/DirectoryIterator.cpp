#include "environment/PathAndText.hpp"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include <fnmatch.h>

#include "environment/local/FolderNames.hpp"
#include "environment/local/OpenedFile.hpp"

namespace fl::filesystem {

pattern_string_context::~pattern_string_context() = default;

korvel_pattern_string_context::korvel_pattern_string_context(std::u16string text,
                                                             std::u16string pattern)
    : text_(std::move(text)), pattern_(std::move(pattern)) {}

upath_directory_entry::upath_directory_entry(const std::u16string& folder, std::u16string filename)
    : filename_(std::move(filename)), fullPathname_(folder) {
    detail::concatenate_pathname(fullPathname_, filename_, true);
}

namespace detail {

namespace {

namespace stdfs = std::filesystem;

/// Regular files only, through links. A file whose kind cannot be had is passed over.
bool isRegularFile(const stdfs::directory_entry& entry) {
    std::error_code unknownKind;
    return entry.is_regular_file(unknownKind);
}

/// Adds the names of the files in `folder`; what was read before a failure counts.
std::error_code readNames(const std::string& folder, const std::string& pattern,
                          std::vector<std::u16string>& names) {
    std::error_code failure;
    for (stdfs::directory_iterator entry(folder, failure), end; !failure && entry != end;
         entry.increment(failure)) {
        if (fnmatch(pattern.c_str(), entry->path().filename().c_str(), 0) != 0 ||
            !isRegularFile(*entry))
            continue;
        if (auto name = environment::local::utf16Name(entry->path()))
            names.push_back(*std::move(name));
    }
    return failure;
}

} // namespace

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
    failure_ = readNames(*path, i18n::to_string(pattern.getPattern()), names_);
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
            throw stdfs::filesystem_error("folder cannot be listed", i18n::to_string(folder_),
                                          std::exchange(failure_, {}));
        return;
    }
    entry_.emplace(folder_, std::move(names_.back()));
    names_.pop_back();
}

} // namespace detail

} // namespace fl::filesystem
