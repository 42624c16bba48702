#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "Support.hpp"
#include "support/ScopedRoot.hpp"

/// A documentation root with a few lookup files, and the host that reads it, made from an input.
namespace fuzz {

inline std::u16string utf16(const std::string& text) {
    return std::filesystem::path(text).u16string();
}

enum class LeafDamage { None, Checksum, Encryption, Method };

struct Leaf {
    std::string name; ///< with the folders; those of a folder end with '/'
    std::string text;
    LeafDamage damage;
    bool isDeflated;
};

enum class FileKind { Text, Package, CutPackage, Folder };

struct LookupFile {
    std::string name;
    FileKind kind;
    std::string text;         ///< of a file that is not a package
    std::vector<Leaf> leaves; ///< of a package, at least one
};

enum class FailingService { None, Products, PackageList, PackageRoot, Language, Languages };

struct Host {
    std::vector<std::string> languages;
    std::string language;
    std::vector<std::string> products;
    std::vector<std::string> supportPackages;
    FailingService failingService;
    /// How many times the products can be asked for between two failures, if that service fails.
    std::size_t failurePeriod;
};

struct CollectionRoot {
    Host host;
    std::vector<LookupFile> files; ///< with different names
};

CollectionRoot chooseRoot(Choices& choices);

void writeFiles(const std::vector<LookupFile>& files, const testsupport::ScopedRoot& root);

} // namespace fuzz
