#pragma once

#include <cstddef>
#include <fstream>
#include <ios>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#pragma GCC visibility push(default)

namespace fl::filesystem {

namespace upath_constant {
/// The separator between the components of a path, NUL-terminated, valid before any load-time
/// initialiser runs.
extern const char16_t* const PATHNAME_SEPARATOR;
} // namespace upath_constant

namespace detail {

template <typename NarrowCharT, typename WideCharT>
struct path_traits {
    using narrow_string = std::basic_string<NarrowCharT>;
    using wide_string = std::basic_string<WideCharT>;
};

/// The last component of `pathname` without its last extension; ".json" is all stem.
std::u16string extract_stem(const std::u16string& pathname);

/// The last extension of the last component of `pathname`, without its dot.
std::u16string extract_extension(const std::u16string& pathname);

/// `pathname` as the platform writes it: a lone surrogate becomes U+FFFD. The flag chooses
/// between forms that are one and the same here.
std::u16string make_native_form(const std::u16string& pathname, bool cleanUp);

/// `pathname` as the platform's system calls take it, here UTF-8; a lone surrogate becomes U+FFFD.
std::string make_native_access_form_with_cleanup_i18n(const std::u16string& pathname);

/// Makes `filename` the new last component of `pathname`; the separator is inserted between the
/// two unless `pathname` is empty or ends with one.
void concatenate_pathname(std::u16string& pathname, const std::u16string& filename, bool cleanUp);

} // namespace detail

/// A path held as UTF-16 text, neither checked nor normalised.
template <typename NarrowCharT, typename WideCharT, typename Traits>
class basic_path {
public:
    basic_path() = default;
    explicit basic_path(typename Traits::wide_string text) : text_(std::move(text)) {}

    const typename Traits::wide_string& ustring() const noexcept { return text_; }

private:
    typename Traits::wide_string text_;
};

using upath = basic_path<char, char16_t, detail::path_traits<char, char16_t>>;

/// How the text of a file-name pattern is read: here as the shell does, `*` for any run of
/// characters.
class korvel_pattern_string_generator {};

/// A file-name pattern, for as long as a directory iterator needs it.
class pattern_string_context {
public:
    virtual ~pattern_string_context();
    virtual const std::u16string& getPattern() const noexcept = 0;
};

/// Holds the text that a pattern was made from, and the pattern.
class korvel_pattern_string_context final : public pattern_string_context {
public:
    korvel_pattern_string_context(std::u16string text, std::u16string pattern);
    const std::u16string& getPattern() const noexcept override { return pattern_; }

private:
    std::u16string text_;
    std::u16string pattern_;
};

/// One file that a directory iterator stands on.
class upath_directory_entry {
public:
    upath_directory_entry(const std::u16string& folder, std::u16string filename);

    const std::u16string& filename() const noexcept { return filename_; }
    const std::u16string& full_pathname() const noexcept { return fullPathname_; }

private:
    std::u16string filename_;
    std::u16string fullPathname_;
};

namespace detail {

korvel_pattern_string_context
generate_pattern_from_filename(const std::u16string& text,
                               const korvel_pattern_string_generator& generator);

enum class initialization_mode : int { first_entry = 0 };

/// Goes through the regular files of one folder, links to such included, each once, in ascending
/// order of their UTF-16 names. Folders, pipes, sockets and devices are no files here, and a file
/// whose name is not UTF-8 is passed over. The order is made when the iterator is: files that come
/// or go later are not noticed.
class upath_directory_iterator_impl {
public:
    /// A folder that does not exist has no entries; one that cannot be listed throws
    /// `std::filesystem::filesystem_error` once the entries that could be had are passed.
    upath_directory_iterator_impl(const std::u16string& nativeFolder,
                                  const pattern_string_context& pattern, bool cleanUp,
                                  initialization_mode mode, bool recursive);

    /// Whether the iterator stands on an entry.
    bool is_open() const noexcept { return entry_.has_value(); }
    const upath_directory_entry& entry() const noexcept { return *entry_; }
    void increment();

private:
    std::u16string folder_;
    std::vector<std::u16string> names_;
    std::error_code failure_;
    std::optional<upath_directory_entry> entry_;
};

} // namespace detail

template <typename CharT>
class basic_ifstream;

/// An input file stream for UTF-16 paths. A file that cannot be opened leaves the stream not open
/// and failed, without raising. Only a file or a folder is opened: a named pipe, a socket or a
/// device counts as missing, so opening never waits. A folder opens, but has no end position, and
/// neither has a file with holes of more than 64 MiB, which would be read as that many zeros.
template <>
class basic_ifstream<char> : public std::ifstream {
public:
    basic_ifstream(const std::u16string& pathname, std::ios_base::openmode mode);
};

} // namespace fl::filesystem

namespace fl::i18n {

/// A conversion of 8-bit text to UTF-16. One object may convert on any number of threads at once.
class codecvt_to_ustring {
public:
    virtual ~codecvt_to_ustring();
    virtual std::u16string convert(const char* text, std::size_t length) const = 0;
};

/// One code unit of the same value per byte, 0x80 to 0xFF included.
class codecvt_ascii_to_ustring final : public codecvt_to_ustring {
public:
    std::u16string convert(const char* text, std::size_t length) const override;
};

/// Decodes text of a named encoding; "utf8" is the one that is known, any other name throws
/// `std::invalid_argument`. Malformed input becomes one U+FFFD per maximal subpart, or, with the
/// flag false, throws `std::range_error`. Text longer than 2^31 - 1 bytes throws
/// `std::length_error`.
class codecvt_string_to_ustring final : public codecvt_to_ustring {
public:
    codecvt_string_to_ustring(std::string_view encoding, bool replaceMalformed);
    std::u16string convert(const char* text, std::size_t length) const override;

private:
    bool replaceMalformed_;
};

/// UTF-16 to the environment's 8-bit form, UTF-8; a lone surrogate becomes U+FFFD.
std::string to_string(const std::u16string& text);

} // namespace fl::i18n

#pragma GCC visibility pop
