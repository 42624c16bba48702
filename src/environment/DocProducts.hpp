#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#pragma GCC visibility push(default)

namespace doc_products_shared {

/// The documentation root: the folder with the documentation data of all products.
class Docroot {
public:
    /// The one object, valid to the end of the process.
    static const Docroot& getInstance();

    /// The folder, without a separator at its end: what the `docDataRoot` service gives or throws.
    /// It is asked at each call, from any thread.
    std::u16string getDocDataRoot() const;
};

/// A documented product. Its texts never change.
class DocProduct {
public:
    /// A product with the given short name.
    explicit DocProduct(std::string shortName);
    virtual ~DocProduct();

    /// The name by which documents know the product: their help folder. Valid as long as the
    /// product.
    const std::string& getShortName() const noexcept { return shortName_; }

private:
    std::string shortName_;
};

/// A product with documentation of its own. All texts are UTF-8, and valid as long as the product.
class TopLevelDocProduct : public DocProduct {
public:
    /// Further names and values that the host knows of a product.
    using Properties = std::vector<std::pair<std::string, std::string>>;

    /// A product with these texts; all but the short name may be empty.
    TopLevelDocProduct(std::string displayName, std::string helpLocation, std::string shortName,
                       std::string baseCode, std::string altShortName, std::string availability,
                       Properties properties);

    /// The name that is shown to people.
    const std::string& getDisplayName() const noexcept { return displayName_; }
    /// Where the product's help lies, in the host's words.
    const std::string& getHelpLocation() const noexcept { return helpLocation_; }
    /// The product's code.
    const std::string& getBaseCode() const noexcept { return baseCode_; }
    /// A second name by which the product is known.
    const std::string& getAltShortName() const noexcept { return altShortName_; }
    /// How the product is available, in the host's words.
    const std::string& getAvailability() const noexcept { return availability_; }

private:
    std::string displayName_;
    std::string helpLocation_;
    std::string baseCode_;
    std::string altShortName_;
    std::string availability_;
    Properties properties_;
};

/// An immutable list of products, shared by all who hold it.
using TopLevelProductList =
    std::shared_ptr<const std::vector<std::shared_ptr<const TopLevelDocProduct>>>;

/// Lists the installed products.
class DocProductCollector {
public:
    /// Asks the host's service, exactly once, and hands on what it gives or throws. The list never
    /// changes and stays valid for as long as it is held; a host may give null for none.
    TopLevelProductList getInstalledTopLevelDocProducts() const;
};

/// Keeps the current collector. Any thread may ask.
class DocProductCacheManager {
public:
    /// The one object, valid to the end of the process.
    static const DocProductCacheManager& getInstance();

    /// The collector, never null.
    std::shared_ptr<DocProductCollector> getDocProductCache() const;
};

} // namespace doc_products_shared

#pragma GCC visibility pop
