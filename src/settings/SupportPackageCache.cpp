#include "settings/SupportPackageCache.hpp"

#include <utility>

#include "environment/SupportPackages.hpp"

namespace reference::docparser {
namespace {

std::unordered_set<std::u16string> listSupportPackages(const std::u16string& root) {
    try {
        return install::product_impl::utils::getInstalledHardwareSupportPackages(root);
    } catch (...) {
        return {};
    }
}

} // namespace

SupportPackageCache::Names SupportPackageCache::get() {
    const std::lock_guard lock(mutex_);
    if (!names_) {
        const std::u16string root = SupportPackageRootReader().getSupportPackageRootNoCreate();
        names_ = std::make_shared<Names::element_type>(listSupportPackages(root));
    }
    return names_;
}

void SupportPackageCache::clear() {
    const std::lock_guard lock(mutex_);
    names_.reset();
}

void SupportPackageCache::replaceLocked(Names names) noexcept {
    names_ = std::move(names);
}

} // namespace reference::docparser
