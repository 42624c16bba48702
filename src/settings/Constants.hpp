#pragma once

#include <string>

#include "environment/PathAndText.hpp"

namespace reference::docparser {

extern const std::u16string& kHashSign;
extern const std::u16string& kDot;

/// The path library's separator, copied when this library is loaded.
extern const std::u16string& kPathSeparator;

/// The catalog folders, relative to the documentation root.
extern const std::u16string& kReferenceApiLookupCatalog;
extern const std::u16string& kReferenceApiCatalog;

/// All threads use them at the same time.
extern const fl::i18n::codecvt_ascii_to_ustring& asciiConverter;
extern const fl::i18n::codecvt_string_to_ustring& utf8Converter;

} // namespace reference::docparser
