#pragma once

#include <string>
#include <unordered_set>

#pragma GCC visibility push(default)

/// Finds the folder of the hardware support packages.
class SupportPackageRootReader {
public:
    /// The folder, which need not exist and is not created: what the `supportPackageRoot` service
    /// gives or throws. It is asked at each call, from any thread.
    std::u16string getSupportPackageRootNoCreate() const;
};

namespace install::product_impl::utils {

/// The names of the hardware support packages that are installed under `root`: what the
/// `installedHardwareSupportPackages` service gives or throws. It is asked at each call, from any
/// thread.
std::unordered_set<std::u16string> getInstalledHardwareSupportPackages(const std::u16string& root);

} // namespace install::product_impl::utils

#pragma GCC visibility pop
