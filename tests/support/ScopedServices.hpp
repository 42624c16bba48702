#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "environment/DocProducts.hpp"
#include "environment/Services.hpp"

namespace testsupport {

inline environment::TopLevelProductList makeProducts(const std::vector<std::string>& shortNames) {
    using Product = doc_products_shared::TopLevelDocProduct;
    std::vector<std::shared_ptr<const Product>> products;
    for (const std::string& name : shortNames)
        products.push_back(
            std::make_shared<const Product>("", "", name, "", "", "", Product::Properties()));
    return std::make_shared<const std::vector<std::shared_ptr<const Product>>>(products);
}

/// Makes services the current ones as long as it lives; afterwards the built-in ones are back.
class ScopedServices {
public:
    explicit ScopedServices(environment::Services services) {
        environment::setServices(std::move(services));
    }
    ScopedServices(const ScopedServices&) = delete;
    ScopedServices& operator=(const ScopedServices&) = delete;
    ~ScopedServices() { environment::resetServices(); }
};

} // namespace testsupport
