#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace refdoc {

/// A product or support package that is installed, documented or both.
struct SurveyedProduct {
    std::u16string key;
    std::u16string name{};        ///< as the documentation has it, else as the installation has it
    std::u16string displayName{}; ///< as the installation has it; empty when it has none
    bool isSupportPackage = false;
    bool isInstalled = false;
    std::size_t records = 0; ///< of its lookup document in the current language
    std::vector<std::u16string> languages{};
    std::vector<std::u16string> files{};
};

struct ProductSurvey {
    std::vector<SurveyedProduct> products;  ///< in the order of their keys
    std::vector<std::u16string> otherFiles; ///< lookup files whose names fit none of the products
};

/// Finds out what is installed and what is documented.
///
/// A product's languages are "en", unless it has no English document, and each other one in which
/// its name or a record differs from the English one. Its files are those that its header's help
/// folder names, as is the convention. Each lookup file is read once.
///
/// @throws what the library's calls throw.
ProductSurvey surveyProducts();

} // namespace refdoc
