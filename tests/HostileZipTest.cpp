#include <cstddef>
#include <cstdint>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "support/HostileFixture.hpp"
#include "support/LookupFixture.hpp"
#include "support/ZipFile.hpp"

namespace {

using testsupport::littleEndian;
using testsupport::lookupText;
using testsupport::ZipBytes;
using testsupport::ZipFile;
using testsupport::ZipMethod;

constexpr std::size_t kMebibyte = 1 << 20;

using HostileZipTest = testsupport::HostileFixture;

ZipBytes makePackage(ZipMethod methodOfSecond = ZipMethod::Deflated) {
    return ZipFile()
        .add("m1.json", lookupText("m:Odd a=1"))
        .add("m2.json", lookupText("m:Odd t=1"), methodOfSecond)
        .add("m3.json", lookupText("m:Odd z=1"))
        .build();
}

const std::string kWhole = "-m:Odd a=1@Odd t=1@Odd z=1@Odd | ";
const std::string kOthers = "-m:Odd a=1@Odd z=1@Odd | ";
const std::string kNothing;

/// The extra field of an entry that is encrypted by AES-256 and compressed by method 8.
const std::string kAesField = littleEndian(0x9901, 2) + littleEndian(7, 2) + littleEndian(2, 2) +
                              "AE" + littleEndian(3, 1) + littleEndian(8, 2);

struct Damage {
    const char* what;
    ZipBytes package;
    std::string read;
};

TEST_F(HostileZipTest, ADamagedEntryCostsNoOther) {
    const ZipBytes sound = makePackage();
    const auto size = static_cast<std::uint32_t>(sound.size());
    const auto entry = [&sound] { return ZipBytes(sound); };
    const std::string sizes64 = littleEndian(1ULL << 40, 8) + littleEndian(1ULL << 40, 8);
    for (const auto& [what, package, read] : {
             Damage{"none", entry(), kWhole},
             Damage{"two entries over one another", entry().shareLocalHeader(1, 0), kOthers},
             Damage{"begins inside another", entry().setCentralField(1, 42, 4, 10), kOthers},
             Damage{"begins in the directory",
                    entry().setCentralField(1, 42, 4,
                                            static_cast<std::uint32_t>(sound.directoryOffset())),
                    kOthers},
             Damage{"begins behind the end", entry().setCentralField(1, 42, 4, size + 1), kOthers},
             Damage{"begins far away", entry().setCentralField(1, 42, 4, 0xFFFF'FFF0), kOthers},
             Damage{"stored size 0", entry().setCompressedSize(1, 0), kOthers},
             Damage{"stored size cut", entry().setCompressedSize(1, 20), kOthers},
             Damage{"stored size far beyond the end", entry().setCompressedSize(1, 0xFFFF'FFF0),
                    kOthers},
             Damage{"bzip2", makePackage(ZipMethod::Bzip2), kOthers},
             Damage{"method of another entry", entry().setMethod(1, 0), kOthers},
             Damage{"unknown method", entry().setMethod(1, 77), kOthers},
             Damage{"checksum", entry().breakChecksum(1), kOthers},
             Damage{"content", entry().setContentByte(1, 0xFF), kOthers},
             Damage{"less declared", entry().setDeclaredSize(1, 5), kOthers},
             Damage{"nothing declared", entry().setDeclaredSize(1, 0), kOthers},
             Damage{"more declared", entry().setDeclaredSize(1, 1U << 29), kOthers},
             Damage{"more than 1 GiB declared", entry().setDeclaredSize(1, (1U << 30) + 1),
                    kOthers},
             Damage{"encryption", entry().markEncrypted(1), kOthers},
             Damage{"encryption of all", entry().markEncrypted(0).markEncrypted(1).markEncrypted(2),
                    kNothing},
             Damage{"strong encryption", entry().setFlags(1, 0x41), kOthers},
             Damage{"method 99",
                    entry().setMethod(1, 99).markEncrypted(1).addExtraField(1, kAesField), kOthers},
             Damage{"large sizes",
                    entry()
                        .setCentralField(1, 20, 4, 0xFFFF'FFFF)
                        .setCentralField(1, 24, 4, 0xFFFF'FFFF)
                        .addExtraField(1, littleEndian(1, 2) + littleEndian(16, 2) + sizes64),
                    kOthers},
             Damage{"large offset",
                    entry()
                        .setCentralField(1, 42, 4, 0xFFFF'FFFF)
                        .addExtraField(1, littleEndian(1, 2) + littleEndian(8, 2) +
                                              littleEndian(1ULL << 62, 8)),
                    kOthers},
             Damage{"much junk behind", ZipBytes(sound.bytes() + std::string(100'000, 'P')),
                    kNothing},
         }) {
        package.write(root.lookupFolder() / "m.zip");
        EXPECT_EQ(collect(), soundAnd(read)) << what;
    }
}

/// A document of `size` bytes, `noise` of which can hardly be compressed.
std::string padded(const std::string& notation, std::size_t size, std::size_t noise = 0) {
    std::string text = lookupText(notation);
    std::minstd_rand random;
    text.back() = ',';
    text += "\"x\":\"";
    for (; noise > 0; --noise)
        text += static_cast<char>('0' + random() % 64);
    std::erase(text, '\\');
    text += "\"}";
    return text.append(size - text.size(), ' ');
}

TEST_F(HostileZipTest, ContentBeyond64TimesWhatIsStoredIsLost) {
    constexpr std::size_t kAnyEntry = 32 * kMebibyte;
    const struct {
        const char* what;
        ZipFile package;
        const char* read;
    } rows[] = {
        {"32 MiB", ZipFile().add("m.json", padded("m:Odd n=1", kAnyEntry)), "-m:Odd n=1@Odd | "},
        {"1 byte more", ZipFile().add("m.json", padded("m:Odd n=1", kAnyEntry + 1)), ""},
        // The noise deflates to three quarters of its size.
        {"50 times", ZipFile().add("m.json", padded("m:Odd n=1", 40 * kMebibyte, kMebibyte)),
         "-m:Odd n=1@Odd | "},
        {"100 times", ZipFile().add("m.json", padded("m:Odd n=1", 90 * kMebibyte, kMebibyte)), ""},
        {"three of 30 MiB, of which two fit, and a small one",
         ZipFile()
             .add("a.json", padded("m:Odd n=1", 30 * kMebibyte))
             .add("b.json", padded("n:Odd n=1", 30 * kMebibyte))
             .add("c.json", padded("m:Odd t=1", 30 * kMebibyte))
             .add("d.json", lookupText("o:Odd n=1")),
         "-m:Odd n=1@Odd | -n:Odd n=1@Odd | -o:Odd n=1@Odd | "},
    };
    for (const auto& [what, package, read] : rows) {
        package.write(root.lookupFolder() / "m.zip");
        EXPECT_EQ(collect(), soundAnd(read)) << what;
    }
}

TEST_F(HostileZipTest, OnlyTheFilesOwnEndRecordIsFollowed) {
    const ZipBytes sound = makePackage();
    const std::string record = sound.endRecordBytes();
    std::string large(0xFFFF, ' ');
    for (std::size_t at = 0; at + record.size() < large.size(); at += record.size())
        large.replace(at, record.size(), record);
    const ZipBytes other = ZipFile().add("m.json", lookupText("o:Other n=1")).build();
    for (const auto& [what, package, read] : {
             Damage{"a comment", ZipBytes(sound).append("PK\5\6 is a comment", true), kWhole},
             Damage{"the record again as its comment", ZipBytes(sound).append(record, true),
                    kWhole},
             Damage{"an empty record as its comment",
                    ZipBytes(sound).append("PK\5\6" + std::string(18, '\0'), true), kWhole},
             Damage{"an empty record behind",
                    ZipBytes(sound).append("PK\5\6" + std::string(18, '\0'), false), kWhole},
             Damage{"a name like a record",
                    ZipFile()
                        .add("m1.json", lookupText("m:Odd a=1 t=1 z=1"))
                        .add("x", "")
                        .build()
                        .setCentralName(1, "PK\5\6" + std::string(18, 'x')),
                    kWhole},
             Damage{"junk behind", ZipBytes(sound).append("PK\5\6" + record.substr(4, 9), false),
                    kWhole},
             Damage{"a package behind", ZipBytes(sound).append(other.bytes(), false), kWhole},
             Damage{"a package as its comment", ZipBytes(sound).append(other.bytes(), true),
                    kWhole},
             Damage{"a package stored within",
                    ZipFile()
                        .add("m1.json", lookupText("m:Odd a=1 t=1 z=1"))
                        .add("m2.zip", other.bytes(), ZipMethod::Stored)
                        .build(),
                    kWhole},
             Damage{"records only", ZipBytes(large), kNothing},
         }) {
        package.write(root.lookupFolder() / "m.zip");
        EXPECT_EQ(collect(), soundAnd(read)) << what;
    }
    // A reader that follows a record reads the whole directory.
    ZipFile package;
    package.add("m1.json", lookupText("m:Odd a=1 t=1 z=1"));
    constexpr std::size_t kOthersBeside = 40'000;
    for (std::size_t entry = 0; entry < kOthersBeside; ++entry)
        package.add(std::to_string(entry), "", ZipMethod::Stored);
    const ZipBytes many = package.build();
    std::string records;
    while (records.size() + record.size() <= 0xFFFF)
        records += many.endRecordBytes();
    for (const ZipBytes& bytes : {ZipBytes(many).append(records, true),
                                  ZipBytes(many).setCentralName(kOthersBeside, records)}) {
        bytes.write(root.lookupFolder() / "m.zip");
        EXPECT_EQ(collect(), soundAnd(kWhole));
    }
}

TEST_F(HostileZipTest, OfAnEntrysNameTheLastComponentCountsAndNothingElseIsTouched) {
    using namespace std::string_literals;
    // A reader that took a name for a path on disk would find this file.
    root.writeFile("m.json", lookupText("o:Outside n=1"));
    const std::string outside = root.nativePathOf("m.json").string();
    const ZipBytes sound =
        ZipFile().add("m.json", lookupText("m:Odd n=1")).add("m.txt", "not read").build();
    const std::string longFolder = std::string(65'528, 'd') + '/';
    const std::string deepFolders = [] {
        std::string folders;
        while (folders.size() < 65'520)
            folders += "d/";
        return folders;
    }();
    struct Case {
        std::string name;
        bool isRead;
    };
    for (const auto& [name, isRead] : {
             Case{outside, true},
             Case{"/etc/m.json", true},
             Case{"../../m.json", true},
             Case{"../../../../../../../../../../../../etc/m.json", true},
             Case{"//m.json", true},
             Case{"./m.json", true},
             Case{"C:\\m.json", true},
             Case{"d\\..\\m.json", true},
             Case{"\\\\host\\m.json", true},
             Case{"\n.json", true},
             Case{"*.json", true},
             Case{"%s%n.json", true},
             Case{" .json", true},
             Case{"\xFF\xFE\x80.json", true},
             Case{"\xED\xA0\x80.json", true},
             Case{"m.json\0"s, false},
             Case{"m\0.json"s, true},
             Case{"", false},
             Case{"/", false},
             Case{".", false},
             Case{"..", false},
             Case{"../", false},
             Case{".json", false},
             Case{"m.json/..", false},
             Case{std::string(65'535, 'm'), false},
             Case{std::string(65'530, 'm') + ".json", true},
             Case{longFolder + "m.json", true},
             Case{deepFolders + "m.json", true},
         }) {
        ZipBytes(sound).setCentralName(0, name).write(root.lookupFolder() / "m.zip");
        EXPECT_EQ(collect(), soundAnd(isRead ? "-m:Odd n=1@Odd | " : "")) << name.substr(0, 100);
    }
}

} // namespace
