#include "refdoc/check/index/LinkPaths.hpp"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <climits>
#include <cstddef>
#include <filesystem>
#include <utility>

namespace refdoc {

namespace {

/// Whether the link begins with a scheme, "name:", and so leaves the documentation.
bool hasScheme(std::string_view link) {
    const std::size_t end = link.find_first_of(":/?#");
    const auto belongs = [](char byte) {
        return std::isalnum(static_cast<unsigned char>(byte)) != 0 || byte == '+' || byte == '-' ||
               byte == '.';
    };
    return end != link.npos && end > 0 && link[end] == ':' &&
           std::all_of(link.begin(), link.begin() + static_cast<std::ptrdiff_t>(end), belongs);
}

/// Malformed escapes are left as they are.
std::string percentDecoded(std::string_view path) {
    std::string decoded;
    for (std::size_t at = 0; at < path.size(); ++at) {
        unsigned char byte = 0;
        const char* const digits = path.data() + at + 1;
        if (path[at] == '%' && path.size() - at > 2 &&
            std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2) {
            decoded += static_cast<char>(byte);
            at += 2;
        } else {
            decoded += path[at];
        }
    }
    return decoded;
}

} // namespace

std::string pageOf(std::string_view link) {
    const std::string_view path = link.substr(0, link.find_first_of("?#"));
    if (path.empty() || path.starts_with('/') || hasScheme(link))
        return {};
    return normalisedPath(percentDecoded(path));
}

bool mayBePath(std::string_view path) {
    constexpr std::ptrdiff_t mostFolders = 100;
    return path.size() <= PATH_MAX && path.find('\0') == path.npos &&
           std::count(path.begin(), path.end(), '/') <= mostFolders;
}

std::string normalisedPath(std::string path) {
    if (!mayBePath(path))
        return path;
    return std::filesystem::path(std::move(path)).lexically_normal().generic_string();
}

} // namespace refdoc
