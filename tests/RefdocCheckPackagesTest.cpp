// What the client's check calls lost of a package must be what the library loses of it.

#include <cstddef>
#include <set>
#include <string>
#include <vector>

#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>
#include <gtest/gtest.h>

#include "refdoc/CheckFiles.hpp"
#include "refdoc/CheckText.hpp"
#include "support/CheckAgreementFixture.hpp"
#include "support/ZipFile.hpp"

namespace {

namespace json = boost::json;
using refdoc::Catalog;
using refdoc::Finding;
using refdoc::Loss;
using testsupport::below;
using testsupport::keptInputs;
using testsupport::kLookup;
using testsupport::numbered;
using testsupport::Random;
using testsupport::RefdocCheckAgreement;
using testsupport::ZipBytes;
using testsupport::ZipFile;

/// A package of one to four leaves, each with one key of its own, damaged here and there.
class MutatedPackage {
public:
    explicit MutatedPackage(Random& random) {
        static const std::vector<std::string> endings{".json", "_ja.json", "_de.json",
                                                      ".JSON", ".zip",     ".txt"};
        ZipFile file;
        const std::size_t count = 1 + below(4, random);
        for (std::size_t i = 0; i < count; ++i) {
            names_.push_back(numbered("l", i) + endings[below(endings.size(), random)]);
            json::value document = testsupport::withoutMember(kLookup, "/supportPackages");
            document = testsupport::withValue(document, "/helpFolder",
                                              json::value(json::string(keyOf(i))));
            if (below(4, random) == 0)
                document = testsupport::withoutMember(document, "/refItems/0/href");
            file.add(names_.back(), json::serialize(document));
        }
        ZipBytes bytes = file.build();
        damageLeaf(bytes, below(count, random), random);
        if (below(6, random) == 0)
            bytes.truncate(below(bytes.size(), random));
        bytes_ = bytes.bytes();
    }

    static std::string keyOf(std::size_t leaf) { return numbered("k", leaf); }
    const std::vector<std::string>& names() const { return names_; }
    const std::string& bytes() const { return bytes_; }

private:
    static void damageLeaf(ZipBytes& bytes, std::size_t leaf, Random& random) {
        switch (below(8, random)) {
        case 0:
            bytes.breakChecksum(leaf);
            break;
        case 1:
            bytes.markEncrypted(leaf);
            break;
        case 2:
            bytes.setMethod(leaf, 77);
            break;
        case 3:
            bytes.setDeclaredSize(leaf, 5);
            break;
        case 4:
            bytes.setContentByte(leaf, 0xFF);
            break;
        default:
            break;
        }
    }

    std::vector<std::string> names_;
    std::string bytes_;
};

class RefdocCheckPackageAgreement : public RefdocCheckAgreement {
protected:
    /// What readers of any language get.
    std::set<std::string> deliveredKeys() {
        std::set<std::string> keys;
        for (const char16_t* each : {u"en", u"ja", u"de"}) {
            language = each;
            for (const auto& [key, product] : deliveredLookups())
                keys.insert(key);
        }
        return keys;
    }

    /// Whether there is nothing to lose: a leaf that is no resource file by its name.
    static bool isOther(const std::string& name) { return name.ends_with(".txt"); }
};

TEST_F(RefdocCheckPackageAgreement, OnMutatedPackages) {
    for (const unsigned seed : {1U, 2U, 3U}) {
        Random random(seed);
        for (int i = 0; i < 300; ++i) {
            const MutatedPackage package(random);
            const std::string name = below(2, random) == 0 ? "m.zip" : "m_ja.zip";
            root.remove("docCatalog");
            root.lookupFile(name, package.bytes());
            const std::vector<Finding> findings = check();
            const std::set<std::string> delivered = deliveredKeys();
            for (std::size_t leaf = 0; leaf < package.names().size(); ++leaf) {
                const std::string& leafName = package.names()[leaf];
                const bool isLost = loses(findings, Loss::File) ||
                                    loses(findings, Loss::Leaf, leafName) || isOther(leafName);
                EXPECT_NE(isLost, delivered.contains(MutatedPackage::keyOf(leaf)))
                    << "seed " << seed << ", package " << i << ", " << name << ": " << leafName;
            }
        }
    }
}

TEST_F(RefdocCheckPackageAgreement, OnKeptPackages) {
    for (const std::string& bytes : keptInputs("zip_package")) {
        root.remove("docCatalog");
        root.lookupFile("m.zip", bytes);
        std::size_t sound = 0;
        for (const refdoc::CatalogFile& file : refdoc::listCatalog(Catalog::Lookup).files)
            refdoc::readTexts(file, [&sound](const auto& text, refdoc::FindingList& findings) {
                const auto resource = refdoc::parseText(text, findings);
                if (resource)
                    refdoc::checkText(text, *resource, findings);
                sound += findings.losesText() ? 0 : 1;
            });
        EXPECT_EQ(sound == 0, deliveredKeys().empty());
    }
}

} // namespace
