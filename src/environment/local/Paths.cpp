#include "environment/PathAndText.hpp"

#include <unicode/utf16.h>

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

} // namespace fl::filesystem
