#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "Support.hpp"
#include "support/ScopedRoot.hpp"

/// A reference root with a few lookup files, and the host that it is read on, as an input says.
namespace fuzz {

struct Lookup {
    std::u16string name;
    std::u16string purpose;
    std::u16string href;
    std::string type;
    std::string functionType;
    bool isDeprecated;
};

struct Document {
    std::u16string productName;
    std::u16string baseCode;
    std::u16string helpFolder;
    std::u16string helpLocation;
    std::vector<Lookup> lookups;
};

enum class TextDamage {
    None,
    UnknownMembers, ///< which is none
    Empty,
    CutShort,
    ByteOrderMark,
    MissingBaseCode,
    MissingHref,
    NullItems
};

/// The text of a lookup file: the product's own document first, then those of support packages.
struct LookupText {
    std::vector<Document> documents;
    TextDamage damage;

    bool isSound() const {
        return damage == TextDamage::None || damage == TextDamage::UnknownMembers;
    }
};

enum class LeafDamage { None, Checksum, Encryption, Method };

struct Leaf {
    std::u16string name; ///< with the folders; those of a folder end with '/'
    LookupText text;
    LeafDamage damage;
    bool isDeflated;
};

enum class FileKind { Text, Package, CutPackage, Folder };

struct LookupFile {
    std::u16string name;
    FileKind kind;
    LookupText text;          ///< of a file that is no package
    std::vector<Leaf> leaves; ///< of a package, one at least
};

enum class FailingService { None, Products, PackageList, PackageRoot, Language, Languages };

struct Host {
    std::vector<std::u16string> languages;
    std::u16string language;
    std::vector<std::u16string> products;
    std::vector<std::u16string> supportPackages;
    FailingService failingService;
    /// How many times the products can be asked for between two failures, if that service fails.
    std::size_t failurePeriod;
};

struct CollectionRoot {
    Host host;
    std::vector<LookupFile> files; ///< no two of one name
};

CollectionRoot chooseRoot(Choices& choices);

void writeFiles(const std::vector<LookupFile>& files, const testsupport::ScopedRoot& root);

} // namespace fuzz
