#include <atomic>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "reference/docparser/DocResourceParser.hpp"
#include "support/HostileFixture.hpp"
#include "support/LookupFixture.hpp"
#include "support/ResourceNotation.hpp"
#include "support/Traps.hpp"
#include "support/ZipFile.hpp"

namespace reference::docparser {
namespace {

using namespace std::string_literals;
using namespace DocResourceParser;
namespace fs = std::filesystem;
using fl::i18n::to_string;
using testing::AnyOf;
using testsupport::lookupText;
using testsupport::referenceText;
using testsupport::Trap;
using testsupport::ZipFile;

class HostileFilesTest : public testsupport::HostileFixture {
protected:
    /// Removes the file at `path` first.
    void lay(const Trap& trap, const fs::path& path) const {
        root.remove(path);
        trap.lay(root.nativePathOf(path));
    }

    static std::string read(const std::u16string& name) {
        return testsupport::notationOf(getResourceFile(name));
    }
};

TEST_F(HostileFilesTest, ATrapIsNoFileAndCostsNoOther) {
    root.referenceFile("half.json", referenceText("f:En a=1"));
    root.referenceFile("other_ja.json", referenceText("f:Ja a=1"));
    for (const Trap& trap : testsupport::allTraps()) {
        SCOPED_TRACE(trap.what);
        for (const char* name : {"m.json", "m.zip", "m_ja.json", "m_ja.zip", "m_de.json"})
            lay(trap, root.lookupFolder() / name);
        EXPECT_EQ(collect(), soundAnd(""));
        for (const char* name : {"trap.json", "trap_ja.json", "half_ja.json", "other.json"})
            lay(trap, root.referenceFolder() / name);
        EXPECT_EQ(read(u"trap"), "");
        EXPECT_EQ(read(u"half"), "f:En a=1");
        EXPECT_EQ(read(u"other"), "f:Ja a=1");
        EXPECT_EQ(readSoundResource(), kSoundResource);
    }
}

TEST_F(HostileFilesTest, AFileWithoutAnEndIsAProblemOthersAreMissing) {
    enableSeverities(16 | 512);
    const fs::path path = root.nativePathOf("trap");
    for (const Trap& trap : testsupport::allTraps()) {
        lay(trap, "trap");
        log.clear();
        const std::string content = openAndReadFile(path.u16string());
        std::vector<std::string> expected = {"Reading file: " + path.string()};
        if (trap.isProblem)
            expected.push_back("Problem reading JSON file: " + path.string());
        EXPECT_EQ(log.messages(), expected) << trap.what;
        EXPECT_TRUE(content.empty() || trap.what.ends_with("/online")) << trap.what;
    }
}

TEST_F(HostileFilesTest, ACatalogFolderMayBeATrap) {
    for (const Trap& trap : testsupport::allTraps()) {
        SCOPED_TRACE(trap.what);
        lay(trap, root.lookupFolder());
        EXPECT_EQ(collect(), "");
        EXPECT_EQ(readSoundResource(), kSoundResource);
        root.remove(root.lookupFolder());
        writeSound();
        lay(trap, root.referenceFolder());
        EXPECT_EQ(collect(), soundAnd(""));
        EXPECT_EQ(readSoundResource(), "");
        lay(trap, "docCatalog");
        EXPECT_EQ(collect(), "");
        EXPECT_EQ(readSoundResource(), "");
        root.remove("docCatalog");
        writeSound();
    }
}

TEST_F(HostileFilesTest, WhatMayNotBeReadCostsNoOther) {
    root.lookupFile("m.json", lookupText("m:Odd n=1"));
    ZipFile().add("m.json", lookupText("n:Odd n=1")).write(root.lookupFolder() / "m.zip");
    root.referenceFile("odd.json", referenceText("f:Odd a=1"));
    constexpr fs::perms kList =
        fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read;
    constexpr fs::perms kEnter =
        fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec;
    fs::permissions(root.nativePathOf(""), kEnter, fs::perm_options::add);
    EXPECT_EQ(collect(), soundAnd("-m:Odd n=1@Odd | -n:Odd n=1@Odd | "));
    for (const fs::path& file : {root.lookupFolder() / "m.json", root.lookupFolder() / "m.zip",
                                 root.referenceFolder() / "odd.json"})
        fs::permissions(file, fs::perms::none);
    {
        const testsupport::WithoutPrivileges nobody;
        if (std::ifstream(root.lookupFolder() / "m.json").is_open() ||
            !std::ifstream(root.lookupFolder() / "a.json").is_open())
            GTEST_SKIP() << "here a process cannot give its privileges up, or then reaches nothing";
        EXPECT_EQ(collect(), soundAnd(""));
        EXPECT_EQ(read(u"odd"), "");
        EXPECT_EQ(readSoundResource(), kSoundResource);
    }
    // A folder that can be listed but not entered has names, one that can be entered but not listed
    // has files.
    for (const auto& [mode, resource] :
         {std::pair(fs::perms::none, ""), {kList, ""}, {kEnter, kSoundResource}}) {
        fs::permissions(root.lookupFolder(), mode);
        fs::permissions(root.referenceFolder(), mode);
        const testsupport::WithoutPrivileges nobody;
        EXPECT_EQ(collect(), "");
        EXPECT_EQ(readSoundResource(), resource);
    }
    for (const fs::path& folder : {root.lookupFolder(), root.referenceFolder()})
        fs::permissions(folder, fs::perms::owner_all);
}

TEST_F(HostileFilesTest, ANameOfAFileIsNoMoreThanAName) {
    struct Case {
        std::string name;
        bool isRead;
    };
    for (const auto& [name, isRead] : {
             Case{std::string(250, 'm') + ".json", true},
             Case{"m\n.json", true},
             Case{"m\x1B[2J.json", true},
             Case{"m\\.json", true},
             Case{"m*?[a].json", true},
             Case{"m%n%s.json", true},
             Case{"m\xE2\x80\xAE.json", true},
             Case{"m..json", true},
             Case{"m\xFF.json", false},
             Case{"m\xC0\xAF.json", false},
         }) {
        root.lookupFile(name, lookupText("m:Odd n=1"));
        EXPECT_EQ(collect(), soundAnd(isRead ? "-m:Odd n=1@Odd | " : "")) << name;
        root.remove(root.lookupFolder() / name);
    }
}

TEST_F(HostileFilesTest, AnyResourceNameIsOnlyLookedFor) {
    for (const std::u16string& name :
         {u""s, u"."s, u".."s, u"/"s, u"sound.json"s, u"sound/../sound"s, u"sound\0"s, u"\0"s,
          u"\xD800"s, u"\xDC00sound"s, u"sound\n"s, std::u16string(70'000, u'n'),
          std::u16string(300, u'/') + u"..", u"*"s, u"/dev/zero"s})
        EXPECT_EQ(read(name), "") << to_string(name.substr(0, 30));
}

class ChangingFilesTest : public HostileFilesTest {
protected:
    /// Calls `disturb` again and again while products are collected and resources are read. What it
    /// changes, "m" in plain files, "n" in packages and the resource "odd", must be read whole or
    /// not at all.
    template <typename Disturb>
    void checkWhile(Disturb disturb) const {
        constexpr int kRounds = 150;
        const std::string plain = "-m:Odd n=1@Odd,2@Odd | ";
        const std::string zipped = "-n:Odd n=1@Odd,2@Odd | ";
        std::atomic<bool> isOver = false;
        std::jthread disturber([&] {
            for (unsigned int round = 0; !isOver; ++round)
                disturb(round);
        });
        for (int round = 0; round < kRounds; ++round) {
            EXPECT_THAT(collect(), AnyOf(soundAnd(""), soundAnd(plain), soundAnd(zipped),
                                         soundAnd(plain + zipped)));
            EXPECT_THAT(read(u"odd"), AnyOf("", "f:Odd a=1"));
            EXPECT_EQ(readSoundResource(), kSoundResource);
        }
        isOver = true;
    }

    const fs::path folder = root.lookupFolder();
    const std::string lookups = lookupText("m:Odd n=1,2");
    const std::string zippedLookups = lookupText("n:Odd n=1,2");
    const std::string references = referenceText("f:Odd a=1");
};

TEST_F(ChangingFilesTest, NeighboursMayComeAndGo) {
    const auto package = ZipFile().add("n.json", zippedLookups).build();
    checkWhile([&](unsigned int round) {
        root.lookupFile("m.json", lookups);
        package.write(folder / "n.zip");
        fs::rename(folder / "m.json", folder / "o.json");
        root.referenceFile("odd.json", references);
        for (const char* name : {"m.json", "n.zip", "o.json", "p.json", "p.zip"})
            root.remove(folder / name);
        root.makeFolder(folder / (round % 2 == 0 ? "m.json" : "n.zip"));
        fs::create_symlink(folder / "a.json", folder / "p.zip");
        root.remove(folder / (round % 2 == 0 ? "m.json" : "n.zip"));
        root.remove(root.referenceFolder() / "odd.json");
    });
}

TEST_F(ChangingFilesTest, NeighboursMayGrowAndShrinkWhileTheyAreRead) {
    const std::string blanks(1 << 20, ' ');
    const auto package =
        ZipFile().add("n.json", zippedLookups + blanks, testsupport::ZipMethod::Stored).build();
    const auto writeAll = [&] {
        root.lookupFile("m.json", lookups + blanks);
        root.referenceFile("odd.json", references + blanks);
        package.write(folder / "n.zip");
    };
    writeAll();
    checkWhile([&](unsigned int round) {
        for (const fs::path& file :
             {folder / "m.json", root.referenceFolder() / "odd.json", folder / "n.zip"}) {
            fs::resize_file(file, round * 7919 % (2 << 20));
            fs::resize_file(file, 0);
        }
        writeAll();
    });
}

} // namespace
} // namespace reference::docparser
