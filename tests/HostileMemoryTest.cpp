#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "environment/Services.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "support/HeapMonitor.hpp"
#include "support/HostileFixture.hpp"
#include "support/LookupFixture.hpp"
#include "support/Traps.hpp"
#include "support/ZipBomb.hpp"
#include "support/ZipFile.hpp"

namespace reference::docparser {
namespace {

namespace fs = std::filesystem;
using testsupport::lookupText;
using testsupport::ZipBytes;

constexpr std::size_t kMebibyte = 1 << 20;

class HostileMemoryTest : public testsupport::HostileFixture {
protected:
    /// The most memory that a collection takes, including that of the sound products, and its
    /// result.
    static std::pair<std::size_t, std::string> measureCollection() {
        const testsupport::HeapPeak peak;
        const LookupResources resources = DocResourceParser::getResourceLookupFiles();
        const std::size_t bytes = peak.bytes();
        return {bytes, testsupport::notationOf(resources)};
    }

    std::size_t peakOfCollection(const std::string& odd) const {
        const auto [bytes, collected] = measureCollection();
        EXPECT_EQ(collected, soundAnd(odd));
        return bytes;
    }
};

TEST_F(HostileMemoryTest, NoBombIsRead) {
    const std::uint64_t bombSize = std::uint64_t{4} << 30;
    const ZipBytes bomb = testsupport::makeZipBomb("m.json", bombSize, 0xFFFF'FFFE);
    const std::pair<const char*, ZipBytes> rows[] = {
        {"content of 4 GiB", bomb},
        {"content of 4 GiB said to be 100 bytes", ZipBytes(bomb).setDeclaredSize(0, 100)},
        {"content of 4 GiB said to be 1 GiB, and cut short",
         ZipBytes(bomb).setDeclaredSize(0, 1U << 30).setCompressedSize(0, 100)},
    };
    for (const auto& [what, bytes] : rows) {
        bytes.write(root.lookupFolder() / "m.zip");
        EXPECT_LT(peakOfCollection(""), 4 * kMebibyte) << what;
    }
}

/// A reader may take a package with a damaged directory or leave it; what it takes must be whole.
TEST_F(HostileMemoryTest, NoPackageOfTheFuzzersCostsMuchOrAnother) {
    const std::string whole = soundAnd("-m:Odd a=1@Odd t=1@Odd z=1@Odd | ");
    for (const fs::path& seed : fs::directory_iterator(DOCPARSER_FUZZ_CORPUS "/zip_package")) {
        SCOPED_TRACE(seed);
        fs::copy_file(seed, root.lookupFolder() / "m.zip", fs::copy_options::overwrite_existing);
        const auto [bytes, collected] = measureCollection();
        // A directory of the usual format may declare 65,535 entries.
        EXPECT_LT(bytes, 4 * kMebibyte);
        EXPECT_TRUE(collected == whole || (collected == soundAnd("") &&
                                           !seed.filename().string().starts_with("seed_whole")))
            << collected;
    }
}

TEST_F(HostileMemoryTest, NoFileIsSizedBeyondReason) {
    for (const testsupport::Trap& trap : testsupport::allTraps())
        for (const char* name : {"m.json", "m.zip"}) {
            trap.lay(root.lookupFolder() / name);
            EXPECT_LT(peakOfCollection(""), kMebibyte) << trap.what << ' ' << name;
            root.remove(root.lookupFolder() / name);
        }
}

TEST_F(HostileMemoryTest, EntriesAreReadOneAfterTheOther) {
    constexpr std::size_t kEntries = 64;
    testsupport::overlappingEntries(lookupText("m:Odd n=1") + std::string(kMebibyte, ' '), kEntries)
        .write(root.lookupFolder() / "m.zip");
    EXPECT_LT(peakOfCollection("-m:Odd n=1@Odd | "), 6 * kMebibyte);
}

TEST_F(HostileMemoryTest, ADocumentTakesASmallMultipleOfItsText) {
    const auto repeated = [](const std::string& text) {
        std::string result;
        while (result.size() < kMebibyte)
            result += text;
        return result;
    };
    const std::string sound = lookupText("m:Odd n=1");
    const std::string begin = sound.substr(0, sound.size() - 1);
    struct Row {
        const char* what;
        std::string text;
        std::size_t multiple = 4; // nothing is kept of unread members
    };
    const Row rows[] = {
        {"blanks", repeated(" ")},
        {"levels", begin + ",\"x\":" + repeated("[")},
        {"empty lists", begin + ",\"x\":[" + repeated("[],")},
        {"empty objects", begin + ",\"x\":[" + repeated("{},")},
        {"numbers", begin + ",\"x\":[" + repeated("0,")},
        {"members", begin + repeated(",\"x\":0")},
        {"a name", begin + ",\"" + repeated("x")},
        {"a name with escapes", begin + ",\"" + repeated("\\n")},
        {"a text", begin + ",\"x\":\"" + repeated("x")},
        {"escapes", begin + ",\"x\":\"" + repeated("\\n")},
        {"numbers for lookups", begin + ",\"refItems\":[" + repeated("0,"), 64},
        {"the same member again", begin + repeated(",\"refItems\":0"), 64},
    };
    for (const auto& [what, text, multiple] : rows) {
        root.lookupFile("m.json", text);
        EXPECT_LT(peakOfCollection(""), multiple * kMebibyte) << what;
    }
    root.remove(root.lookupFolder() / "m.json");

    // A small package keeps no more values than documentation of its size.
    const std::string numbers = begin + ",\"refItems\":[" + repeated("0,");
    std::string many = numbers;
    while (many.size() < 30 * kMebibyte)
        many += numbers.substr(begin.size() + 13);
    testsupport::ZipFile().add("m.json", many).write(root.lookupFolder() / "m.zip");
    EXPECT_LT(peakOfCollection(""), 500 * kMebibyte);
}

TEST_F(HostileMemoryTest, OfTheListOfProductsOnlyTheirMembersAreKept) {
    std::string list = R"([{"shortName":"f")";
    for (int member = 0; list.size() < kMebibyte; ++member)
        list += ",\"" + std::to_string(member) + "\":0";
    root.writeFile("installedProducts.json", list + "}]");
    environment::setServices(testsupport::withDocDataRoot([this] { return root.path(); }));
    const testsupport::HeapPeak peak;
    EXPECT_EQ(testsupport::namesOfProducts(), "f ");
    EXPECT_LT(peak.bytes(), 4 * kMebibyte);
}

} // namespace
} // namespace reference::docparser
