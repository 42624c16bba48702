#include "environment/ZipPackages.hpp"

#include <cstdint>
#include <ostream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/OpenPackage.hpp"
#include "support/ScopedRoot.hpp"
#include "support/ZipBomb.hpp"
#include "support/ZipFile.hpp"

namespace {

using opc::zqservices::FileSystemEntry;
using opc::zqservices::TransformMode;
using testing::ElementsAre;
using testsupport::OpenPackage;
using testsupport::ScopedRoot;
using testsupport::ZipBytes;
using testsupport::ZipFile;
using testsupport::ZipMethod;

/// Text that compresses, but not to nothing.
std::string longText() {
    std::string text;
    for (int line = 0; line < 40'000; ++line)
        text += std::to_string(line * 7919 % 100'003) + '\n';
    return text;
}

ZipFile threeEntries() {
    return ZipFile()
        .add("before.json", "before", ZipMethod::Stored)
        .add("tested.json", longText())
        .add("after.json", "after");
}

TEST(ZipPackages, LeavesAreInDirectoryOrderWithoutFolders) {
    const ScopedRoot root;
    ZipFile()
        .add("z.json", "1", ZipMethod::Stored)
        .add("folder/", "")
        .add("folder/deeper/a.json", longText())
        .add("z.json", "2")
        .add("folder/z.json", "")
        .add("\xC3\xA9\xF0\x9F\x98\x80.json", "4")
        .write(root.nativePathOf("p.zip"));
    OpenPackage package(root.pathOf("p.zip"));
    EXPECT_THAT(package.names(),
                ElementsAre(u"z.json", u"a.json", u"z.json", u"z.json", u"\u00E9\U0001F600.json"));
    EXPECT_EQ(package.content(0), "1");
    EXPECT_EQ(package.content(1), longText());
    EXPECT_EQ(package.content(2), "2");
    EXPECT_EQ(package.content(3), "");
    package.open();
    EXPECT_EQ(package.content(4), "4");
}

TEST(ZipPackages, NamesThatAreNotUtf8AreReadAsCodePage437) {
    const ScopedRoot root;
    ZipFile().add("u.json", "").build().setName(0, "\x81.json").write(root.nativePathOf("p.zip"));
    EXPECT_THAT(OpenPackage(root.pathOf("p.zip")).names(), ElementsAre(u"\u00FC.json"));
}

TEST(ZipPackages, EntriesOutliveThePackage) {
    const ScopedRoot root;
    threeEntries().write(root.nativePathOf("p.zip"));
    const FileSystemEntry entry = OpenPackage(root.pathOf("p.zip")).leaves().at(1);
    EXPECT_EQ(entry.getBaseName(), u"tested.json");
}

TEST(ZipPackages, AnEmptyPackageHasNoLeaves) {
    const ScopedRoot root;
    root.writeFile("p.zip", std::string("PK\5\6") + std::string(18, '\0'));
    EXPECT_THAT(OpenPackage(root.pathOf("p.zip")).names(), testing::IsEmpty());
}

TEST(ZipPackages, AreNotReadBeforeTheyAreOpened) {
    const ScopedRoot root;
    threeEntries().write(root.nativePathOf("p.zip"));
    OpenPackage package(root.pathOf("p.zip"), false);
    EXPECT_THROW(package.leaves(), std::runtime_error);
    const auto leaves = OpenPackage(root.pathOf("p.zip")).leaves();
    EXPECT_THROW(package.content(leaves.front()), std::runtime_error);
    package.open();
    EXPECT_EQ(package.leaves().size(), 3U);
}

TEST(ZipPackages, OpeningWhatIsNoPackageThrowsAndNeverWaits) {
    const ScopedRoot root;
    root.writeFile("text", "no zip at all, whatever its name says");
    root.writeFile("empty", "");
    root.makeFolder("folder");
    root.makePipe("pipe");
    threeEntries().build().truncate(500).write(root.nativePathOf("truncated"));
    for (const char* name : {"text", "empty", "folder", "pipe", "truncated", "missing"})
        EXPECT_THROW(OpenPackage(root.pathOf(name)), std::runtime_error) << name;
}

TEST(ZipPackages, SharedContentIsReadUpToEightTimesTheSizeOfThePackage) {
    const ScopedRoot root;
    testsupport::overlappingEntries(longText(), 64).write(root.nativePathOf("p.zip"));
    const OpenPackage package(root.pathOf("p.zip"));
    for (std::size_t leaf = 0; leaf < 8; ++leaf)
        EXPECT_EQ(package.content(leaf).size(), longText().size()) << leaf;
    for (std::size_t leaf = 8; leaf < 64; ++leaf)
        EXPECT_THROW(package.content(leaf), std::runtime_error) << leaf;
}

TEST(ZipPackages, NoByteOfAPackageIsTrusted) {
    const ZipBytes sound = ZipFile().add("a.json", "[1]").add("b.json", "[2]").build();
    const ScopedRoot root;
    for (std::size_t offset = 0; offset < sound.size(); ++offset)
        for (const char value : {'\0', '\x7F', '\xFF'}) {
            ZipBytes(sound)
                .setByte(offset, static_cast<unsigned char>(value))
                .write(root.nativePathOf("p.zip"));
            try {
                const OpenPackage package(root.pathOf("p.zip"));
                for (const FileSystemEntry& leaf : package.leaves())
                    EXPECT_LE(package.content(leaf).size(), 3U);
            } catch (const std::runtime_error&) {
            }
        }
}

TEST(ZipPackages, AStreamThatTakesNothingIsReported) {
    const ScopedRoot root;
    threeEntries().write(root.nativePathOf("p.zip"));
    OpenPackage package(root.pathOf("p.zip"));
    const auto source =
        package.manager().getFileContentSource(package.leaves().front(), TransformMode::Decoded);
    std::ostream nowhere(nullptr);
    EXPECT_THROW(opc::StreamHelper::copyStreamToStream(source->getInputStream(), nowhere),
                 std::runtime_error);
}

TEST(ZipPackages, ManyThreadsReadThroughOneManager) {
    const ScopedRoot root;
    ZipFile file;
    for (int entry = 0; entry < 8; ++entry)
        file.add(std::to_string(entry) + ".json", std::to_string(entry) + longText());
    file.write(root.nativePathOf("p.zip"));
    const OpenPackage package(root.pathOf("p.zip"));
    std::vector<std::jthread> threads;
    for (std::size_t thread = 0; thread < 4; ++thread)
        threads.emplace_back([&package, thread] {
            for (std::size_t round = 0; round < 16; ++round) {
                const std::size_t leaf = (round * (thread + 1)) % 8;
                EXPECT_EQ(package.content(leaf), std::to_string(leaf) + longText());
            }
        });
}

} // namespace
