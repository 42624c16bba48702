#pragma once

#include <cstddef>
#include <fstream>
#include <ios>
#include <memory>
#include <optional>
#include <streambuf>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace environment::local {
class FileBuffer;
} // namespace environment::local

#pragma GCC visibility push(default)

namespace fl::filesystem {

namespace upath_constant {
/// The separator between the components of a path, NUL-terminated, valid before any load-time
/// initialiser runs.
extern const char16_t* const PATHNAME_SEPARATOR;
} // namespace upath_constant

namespace detail {

/// The text types of a path.
template <typename NarrowCharT, typename WideCharT>
struct path_traits {
    /// Text as the platform's system calls take it.
    using narrow_string = std::basic_string<NarrowCharT>;
    /// Text of the path.
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
    /// The empty path.
    basic_path() = default;
    /// The path that `text` spells.
    explicit basic_path(typename Traits::wide_string text) : text_(std::move(text)) {}

    /// The text, valid as long as the path.
    const typename Traits::wide_string& ustring() const noexcept { return text_; }

private:
    typename Traits::wide_string text_;
};

/// The path type of the environment: UTF-16 text.
using upath = basic_path<char, char16_t, detail::path_traits<char, char16_t>>;

/// Reads file-name patterns as the shell does: `*` matches any run of characters.
class korvel_pattern_string_generator {};

/// A file-name pattern, kept for as long as a directory iterator needs it.
class pattern_string_context {
public:
    virtual ~pattern_string_context();
    /// The pattern's text, valid as long as the context.
    virtual const std::u16string& getPattern() const noexcept = 0;
};

/// Holds the text that a pattern was made from, and the pattern.
class korvel_pattern_string_context final : public pattern_string_context {
public:
    /// Keeps `pattern` and the text that it was made from.
    korvel_pattern_string_context(std::u16string text, std::u16string pattern);
    /// The pattern's text, valid as long as the context.
    const std::u16string& getPattern() const noexcept override;

private:
    std::u16string text_;
    std::u16string pattern_;
};

/// One file that a directory iterator stands on.
class upath_directory_entry {
public:
    /// The file `filename` of `folder`.
    upath_directory_entry(const std::u16string& folder, std::u16string filename);

    /// The file's name, without its folder; valid as long as the entry.
    const std::u16string& filename() const noexcept { return filename_; }
    /// The folder as it was given, a separator and the name; valid as long as the entry.
    const std::u16string& full_pathname() const noexcept { return fullPathname_; }

private:
    std::u16string filename_;
    std::u16string fullPathname_;
};

namespace detail {

/// The pattern that `text` means to `generator`.
korvel_pattern_string_context
generate_pattern_from_filename(const std::u16string& text,
                               const korvel_pattern_string_generator& generator);

/// Where a directory iterator stands at first.
enum class initialization_mode : int { first_entry = 0 };

/// Goes through the regular files of one folder, links to such included, each once, in ascending
/// order of their UTF-16 names. Folders, pipes, sockets and devices do not count, and a file
/// whose name is not UTF-8 is skipped. The order is made when the iterator is: files that come
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
    /// The entry that the iterator stands on, valid until it moves.
    const upath_directory_entry& entry() const noexcept { return *entry_; }
    /// Moves on to the next entry, or past the last one.
    ///
    /// @throws std::filesystem::filesystem_error past the last entry of a folder that could not be
    ///         listed to its end.
    void increment();

private:
    std::u16string folder_;
    std::vector<std::u16string> names_;
    std::error_code failure_;
    std::optional<upath_directory_entry> entry_;
};

} // namespace detail

/// Only the form for `char` exists.
template <typename CharT>
class basic_ifstream;

/// An input file stream for UTF-16 paths. A file that cannot be opened leaves the stream not open
/// and failed, without raising. Only a file or a folder is opened: a named pipe, a socket or a
/// device counts as missing, so opening never waits for one. Where another process has leased the
/// file, opening waits until the lease is given up or taken away by the system, 66 seconds at most.
///
/// A folder opens, but has no end position, and neither has a file with holes of more than 64 MiB,
/// which would be read as that many zeros. Of a file that grows, what it had when it was opened is
/// read, and no more; one that shrinks ends early.
///
/// The file is read by a buffer of the stream's own. Through a reference to `std::ifstream` it is
/// read as well, but `is_open`, `close` and `rdbuf` then mean the buffer of that base, which is
/// never open.
template <>
class basic_ifstream<char> : public std::ifstream {
public:
    /// Opens the file; `std::ios_base::in` is always part of the mode, `std::ios_base::ate` is
    /// heeded, and no other flag matters: nothing is translated or written.
    ///
    /// @throws std::bad_alloc when memory runs out.
    basic_ifstream(const std::u16string& pathname, std::ios_base::openmode mode);
    ~basic_ifstream() override;
    /// A stream can be neither copied nor moved.
    basic_ifstream(const basic_ifstream&) = delete;
    basic_ifstream& operator=(const basic_ifstream&) = delete;

    /// Whether a file or a folder is open.
    bool is_open() const noexcept;
    /// Closes the file; the stream fails when none is open.
    void close();
    /// What the stream reads from, valid as long as the stream.
    std::streambuf* rdbuf() const { return std::ios::rdbuf(); }

    /// A stream reads the file that it was made for, and no other.
    void open() = delete;
    /// Two streams cannot exchange their files.
    void swap() = delete;

private:
    std::unique_ptr<environment::local::FileBuffer> buffer_; // none when nothing was opened
};

} // namespace fl::filesystem

namespace fl::i18n {

/// A conversion of 8-bit text to UTF-16. One object may convert on any number of threads at once.
class codecvt_to_ustring {
public:
    virtual ~codecvt_to_ustring();
    /// The text as UTF-16.
    ///
    /// @param text the bytes, which need no NUL at their end and may hold some.
    /// @param length how many bytes.
    /// @throws std::bad_alloc when memory runs out; each conversion says what else.
    virtual std::u16string convert(const char* text, std::size_t length) const = 0;
};

/// One code unit of the same value per byte, 0x80 to 0xFF included.
class codecvt_ascii_to_ustring final : public codecvt_to_ustring {
public:
    /// Widens `length` bytes; no input is malformed.
    std::u16string convert(const char* text, std::size_t length) const override;
};

/// Decodes text of a named encoding; "utf8" is the one that is known, any other name throws
/// `std::invalid_argument`. Malformed input becomes one U+FFFD per maximal subpart, or, with the
/// flag false, throws `std::range_error`. Text longer than 2^31 - 1 bytes throws
/// `std::length_error`.
class codecvt_string_to_ustring final : public codecvt_to_ustring {
public:
    /// Converts text of `encoding`.
    ///
    /// @throws std::invalid_argument when the encoding is not known.
    codecvt_string_to_ustring(std::string_view encoding, bool replaceMalformed);
    /// Decodes `length` bytes.
    std::u16string convert(const char* text, std::size_t length) const override;

private:
    bool replaceMalformed_;
};

/// The UTF-16 of a UTF-8 text; malformed input becomes one U+FFFD per maximal subpart. It converts
/// as `codecvt_string_to_ustring("utf8", true)` does.
///
/// @param text the bytes, which may hold NULs.
/// @throws std::length_error for more than 2^31 - 1 bytes.
/// @throws std::bad_alloc when memory runs out.
std::u16string from_utf8(std::string_view text);

/// UTF-16 to the environment's 8-bit form, UTF-8; a lone surrogate becomes U+FFFD.
std::string to_string(const std::u16string& text);

} // namespace fl::i18n

#pragma GCC visibility pop
