#include "environment/PathAndText.hpp"

#include <unistd.h>

#include <ext/stdio_filebuf.h>
#include <unicode/utf16.h>

#include "environment/local/OpenedFile.hpp"

namespace fl::filesystem {

namespace upath_constant {

constinit const char16_t* const PATHNAME_SEPARATOR = u"/";

} // namespace upath_constant

namespace detail {

namespace {

constexpr char16_t kSeparator = u'/';
constexpr char16_t kReplacement = u'\uFFFD';

std::u16string_view lastComponent(std::u16string_view pathname) {
    return pathname.substr(pathname.rfind(kSeparator) + 1);
}

/// Where the extension's dot stands in a component, or its length when there is none.
std::size_t extensionBegin(std::u16string_view component) {
    const std::size_t dot = component.rfind(u'.');
    const bool hasExtension = dot != component.npos && dot != 0 && component != u"..";
    return hasExtension ? dot : component.size();
}

} // namespace

std::u16string extract_stem(const std::u16string& pathname) {
    const std::u16string_view component = lastComponent(pathname);
    return std::u16string(component.substr(0, extensionBegin(component)));
}

std::u16string extract_extension(const std::u16string& pathname) {
    const std::u16string_view component = lastComponent(pathname);
    const std::size_t begin = extensionBegin(component);
    return begin == component.size() ? std::u16string()
                                     : std::u16string(component.substr(begin + 1));
}

std::u16string make_native_form(const std::u16string& pathname, bool /*cleanUp*/) {
    std::u16string wellFormed = pathname;
    for (std::size_t next = 0; next < pathname.size();) {
        const std::size_t unit = next;
        UChar32 codePoint = 0;
        U16_NEXT(pathname, next, pathname.size(), codePoint);
        if (U_IS_SURROGATE(codePoint))
            wellFormed[unit] = kReplacement;
    }
    return wellFormed;
}

std::string make_native_access_form_with_cleanup_i18n(const std::u16string& pathname) {
    return i18n::to_string(pathname);
}

void concatenate_pathname(std::u16string& pathname, const std::u16string& filename,
                          bool /*cleanUp*/) {
    if (!pathname.empty() && pathname.back() != kSeparator)
        pathname += kSeparator;
    pathname += filename;
}

} // namespace detail

basic_ifstream<char>::basic_ifstream(const std::u16string& pathname, std::ios_base::openmode mode) {
    auto file = environment::local::openForReading(pathname);
    if (file) {
        // A buffer that opens owns the file from then on, also when its construction throws.
        const int number = file->descriptor.release();
        __gnu_cxx::stdio_filebuf<char> buffer(number, mode | std::ios_base::in);
        if (buffer.is_open())
            *rdbuf() = std::move(buffer);
        else
            ::close(number);
    }
    if (!is_open())
        setstate(std::ios_base::failbit);
    else if (!file->hasContent)
        // Otherwise such a file could be sized; some file systems size a folder as 2^63 - 1 bytes.
        setstate(std::ios_base::badbit);
    else if ((mode & std::ios_base::ate) != 0)
        seekg(0, std::ios_base::end);
}

} // namespace fl::filesystem
