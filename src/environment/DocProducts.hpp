#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#pragma GCC visibility push(default)

namespace doc_products_shared {

/// The folder under which the documentation data of all products lies.
class Docroot {
public:
    static const Docroot& getInstance();

    std::u16string getDocDataRoot() const;
};

/// A documented product.
class DocProduct {
public:
    explicit DocProduct(std::string shortName);
    virtual ~DocProduct();

    const std::string& getShortName() const noexcept { return shortName_; }

private:
    std::string shortName_;
};

/// A product with documentation of its own. All texts are UTF-8.
class TopLevelDocProduct : public DocProduct {
public:
    using Properties = std::vector<std::pair<std::string, std::string>>;

    TopLevelDocProduct(std::string displayName, std::string helpLocation, std::string shortName,
                       std::string baseCode, std::string altShortName, std::string availability,
                       Properties properties);

    const std::string& getDisplayName() const noexcept { return displayName_; }
    const std::string& getHelpLocation() const noexcept { return helpLocation_; }
    const std::string& getBaseCode() const noexcept { return baseCode_; }
    const std::string& getAltShortName() const noexcept { return altShortName_; }
    const std::string& getAvailability() const noexcept { return availability_; }

private:
    std::string displayName_;
    std::string helpLocation_;
    std::string baseCode_;
    std::string altShortName_;
    std::string availability_;
    Properties properties_;
};

/// Lists the installed products.
class DocProductCollector {
public:
    /// Asks the host's service, exactly once, and hands on what it gives or throws.
    std::shared_ptr<const std::vector<std::shared_ptr<const TopLevelDocProduct>>>
    getInstalledTopLevelDocProducts() const;
};

/// Keeps the current collector. Any thread may ask.
class DocProductCacheManager {
public:
    static const DocProductCacheManager& getInstance();

    std::shared_ptr<DocProductCollector> getDocProductCache() const;
};

} // namespace doc_products_shared

#pragma GCC visibility pop
