#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "environment/PathAndText.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "reference/docparser/ProductData.hpp"
#include "support/LibraryFixture.hpp"
#include "support/LogCapture.hpp"
#include "support/OpenPackage.hpp"
#include "support/ScopedRoot.hpp"
#include "support/ZipFile.hpp"

namespace reference::docparser::DocResourceParser {
namespace {

using namespace std::string_literals;
using fl::i18n::to_string;

using testsupport::kChannel;

class FileAccessTest : public testsupport::LibraryFixture {
protected:
    FileAccessTest() { enableSeverities(16 | 512); }

    testsupport::ScopedRoot root;
};

std::string allByteValues() {
    std::string bytes;
    for (int value = 0; value < 256; ++value)
        bytes += static_cast<char>(value);
    return bytes;
}

const std::vector<std::string> kContents = {
    "",
    "{}",
    "\xEF\xBB\xBF{}",
    "\0\0x\0"s,
    "a\r\nb\rc\n\x1A",
    allByteValues(),
    std::string(3 << 20, 'x') + "end",
};

TEST_F(FileAccessTest, FilesComeBackByteForByte) {
    for (const char* name : {"plain.json", "ä 日本 \U0001F600.json", "no extension"}) {
        for (std::size_t i = 0; i < kContents.size(); ++i) {
            root.writeFile(name, kContents[i]);
            const std::u16string path = root.pathOf(name);
            const std::vector<std::string> reading{"Reading file: " + to_string(path)};
            const testsupport::LogCapture log;
            EXPECT_TRUE(openAndReadFile(path) == kContents[i]) << name << ", content " << i;
            EXPECT_EQ(log.messages(), reading);
        }
    }
}

TEST_F(FileAccessTest, WhatCannotBeReadIsEmpty) {
    root.writeFile("file.json", "content");
    struct Case {
        std::u16string path;
        bool isProblem;
    };
    for (const auto& [path, isProblem] : {
             Case{root.pathOf("missing.json"), false},
             Case{root.pathOf("file.json") + u"/file.json", false},
             Case{root.pathOf("file.json") + u'\0', false},
             Case{root.pathOf("file.json") + u'\0' + u"x", false},
             Case{root.pathOf("") + std::u16string(5000, u'x'), false},
             Case{root.pathOf("\xED\xA0\x80.json"), false},
             Case{u"", false},
             Case{u"/", true},
         }) {
        std::vector<std::string> expected{"Reading file: " + to_string(path)};
        if (isProblem)
            expected.push_back("Problem reading JSON file: " + to_string(path));
        const testsupport::LogCapture log;
        EXPECT_EQ(openAndReadFile(path), "") << to_string(path);
        EXPECT_EQ(log.messages(), expected);
    }
}

std::vector<ProductZipData> productsOf(testsupport::OpenPackage& package) {
    std::vector<ProductZipData> products;
    for (const auto& leaf : package.leaves())
        products.emplace_back(u"product" + std::u16string(products.size(), u'+'), false, leaf,
                              &package.manager());
    return products;
}

TEST_F(FileAccessTest, ZipEntriesComeBackByteForByte) {
    testsupport::ZipFile file;
    for (std::size_t i = 0; i < kContents.size(); ++i)
        file.add(std::to_string(i) + ".json", kContents[i]);
    file.write(root.nativePathOf("package.zip"));
    testsupport::OpenPackage package(root.pathOf("package.zip"));
    const auto products = productsOf(package);
    ASSERT_EQ(products.size(), kContents.size());
    for (std::size_t i = 0; i < kContents.size(); ++i)
        EXPECT_TRUE(openAndReadFile(products[i]) == kContents[i]) << "content " << i;
}

TEST_F(FileAccessTest, ABrokenZipEntryIsEmptyAndCostsNoOther) {
    const std::string content(1 << 20, 'x');
    const testsupport::ZipBytes sound =
        testsupport::ZipFile().add("0.json", content).add("1.json", content).build();
    const std::pair<const char*, testsupport::ZipBytes> rows[] = {
        {"cannot be opened", testsupport::ZipBytes(sound).markEncrypted(1)},
        {"breaks at its beginning", testsupport::ZipBytes(sound).setContentByte(1, 0xFF)},
        {"breaks at its end", testsupport::ZipBytes(sound).breakChecksum(1)},
    };
    const std::vector<testsupport::LogRecord> expected{
        {"Reading file: product+", kChannel, 16},
        {"Error reading file: product+", kChannel, 16},
        {"Reading file: product", kChannel, 16},
    };
    for (const auto& [damage, bytes] : rows) {
        bytes.write(root.nativePathOf("package.zip"));
        testsupport::OpenPackage package(root.pathOf("package.zip"));
        const auto products = productsOf(package);
        ASSERT_EQ(products.size(), 2U) << damage;
        const testsupport::LogCapture log;
        EXPECT_EQ(openAndReadFile(products[1]), "") << damage;
        EXPECT_TRUE(openAndReadFile(products[0]) == content) << damage;
        EXPECT_EQ(log.records(), expected) << damage;
    }
}

TEST(FileNameRulesTest, TheLastExtensionDecides) {
    const std::pair<const char16_t*, bool> cases[] = {
        {u"alpha.json", true},    {u"alpha.zip", true},       {u"alpha_ja.json", true},
        {u"alpha.tar.zip", true}, {u"/a.b/alpha.json", true}, {u"alpha..json", true},
        {u"alpha.JSON", false},   {u"alpha.Zip", false},      {u"alpha.json.bak", false},
        {u"alpha.txt", false},    {u"alpha", false},          {u"/x.json/alpha", false},
        {u"json", false},         {u".json", false},          {u"alpha.json ", false},
        {u"alpha.jsonl", false},  {u"alpha.", false},         {u"", false},
    };
    for (const auto& [name, isValid] : cases)
        EXPECT_EQ(isValidFilename(fl::filesystem::upath(name)), isValid) << to_string(name);
}

} // namespace
} // namespace reference::docparser::DocResourceParser
