#pragma once

#include <string>

#include "environment/ZipPackages.hpp"

namespace refdoc {

/// A zip package, open for reading.
struct OpenedPackage {
    /// @throws what the environment throws for a package that cannot be read.
    explicit OpenedPackage(const std::u16string& path)
        : operations(storage::microservicestoragesystem::GetStorageSystemReference()),
          physicalPackage(path, operations, true), package(physicalPackage),
          manager(package, operations) {
        package.open(opc::interfaces::OpenMode::Read);
    }

    opc::FileSystemOpsSelector operations;
    opc::zippackage::ZipPhysicalPackage physicalPackage;
    opc::model::Package package;
    opc::zqservices::FileSystemManager manager;
};

} // namespace refdoc
