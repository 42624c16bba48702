#pragma once

#include <cstddef>
#include <sstream>
#include <string>
#include <vector>

#include "environment/ZipPackages.hpp"

namespace testsupport {

/// A package with all objects that reading it takes.
class OpenPackage {
public:
    explicit OpenPackage(const std::u16string& path, bool isOpen = true)
        : selector_(storage::microservicestoragesystem::GetStorageSystemReference()),
          physical_(path, selector_, true), package_(physical_), manager_(package_, selector_) {
        if (isOpen)
            package_.open(opc::interfaces::OpenMode::Read);
    }

    void open() { package_.open(opc::interfaces::OpenMode::Read); }
    opc::zqservices::FileSystemManager& manager() { return manager_; }
    std::vector<opc::zqservices::FileSystemEntry> leaves() const { return manager_.getAllLeafs(); }

    std::vector<std::u16string> names() const {
        std::vector<std::u16string> names;
        for (const opc::zqservices::FileSystemEntry& leaf : leaves())
            names.push_back(leaf.getBaseName());
        return names;
    }

    std::string content(const opc::zqservices::FileSystemEntry& leaf) const {
        const auto source =
            manager_.getFileContentSource(leaf, opc::zqservices::TransformMode::Decoded);
        std::ostringstream output;
        opc::StreamHelper::copyStreamToStream(source->getInputStream(), output);
        return output.str();
    }

    std::string content(std::size_t leaf) const { return content(leaves().at(leaf)); }

private:
    opc::FileSystemOpsSelector selector_;
    opc::zippackage::ZipPhysicalPackage physical_;
    opc::model::Package package_;
    opc::zqservices::FileSystemManager manager_;
};

} // namespace testsupport
