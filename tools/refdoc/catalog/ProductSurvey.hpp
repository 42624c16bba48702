#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace refdoc {

/// A product or support package that is installed, documented or both.
struct SurveyedProduct {
    std::u16string key;
    std::u16string name{};        ///< from the documentation, or else from the installation
    std::u16string displayName{}; ///< from the installation; may be empty
    bool isSupportPackage = false;
    bool isInstalled = false;
    std::size_t records = 0; ///< in its lookup document, in the current language
    std::vector<std::u16string> languages{};
    std::vector<std::u16string> files{};
};

struct ProductSurvey {
    std::vector<SurveyedProduct> products;  ///< sorted by key
    std::vector<std::u16string> otherFiles; ///< lookup files named after none of the products
};

/// Finds out what is installed and what is documented.
///
/// The languages of a product are "en", unless it has no English document, and every other language
/// in which its name or a record differs from English. Its files are those that the help folder of
/// its header names, by convention. Each lookup file is read once.
///
/// @throws whatever the library's functions throw.
ProductSurvey surveyProducts();

} // namespace refdoc
