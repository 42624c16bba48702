#include <array>
#include <csignal>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "environment/PathAndText.hpp"
#include "support/OpenDescriptors.hpp"
#include "support/ScopedRoot.hpp"

namespace {

namespace fs = std::filesystem;
using FileStream = fl::filesystem::basic_ifstream<char>;
using testsupport::ScopedRoot;

constexpr auto kBinary = std::ios_base::binary;

std::string readUpTo(std::istream& file, std::streamsize count) {
    std::string text(static_cast<std::size_t>(count), '?');
    file.read(text.data(), count);
    return text + std::to_string(file.gcount());
}

/// One use of a stream; the number is a size or a position.
using Use = std::function<std::string(std::istream& file, int number)>;

const std::pair<const char*, Use> kUses[] = {
    {"get", [](auto& file, int) { return std::to_string(file.get()); }},
    {"peek", [](auto& file, int) { return std::to_string(file.peek()); }},
    {"unget", [](auto& file, int) { return std::to_string(file.unget().good()); }},
    {"put back", [](auto& file, int) { return std::to_string(file.putback('7').good()); }},
    {"read", [](auto& file, int number) { return readUpTo(file, number); }},
    {"read little", [](auto& file, int number) { return readUpTo(file, number % 9); }},
    {"ignore",
     [](auto& file, int number) { return std::to_string(file.ignore(number, '7').gcount()); }},
    {"line",
     [](auto& file, int) {
         std::string line;
         std::getline(file, line);
         return line;
     }},
    {"number",
     [](auto& file, int) {
         int value = 0;
         file >> value;
         return std::to_string(value);
     }},
    {"go to", [](auto& file, int number) { return std::to_string(file.seekg(number).good()); }},
    {"go on",
     [](auto& file, int number) {
         const std::streamoff offset = number - file.tellg();
         return std::to_string(file.seekg(offset, std::ios_base::cur).good());
     }},
    {"go back from the end",
     [](auto& file, int number) {
         return std::to_string(file.seekg(-number, std::ios_base::end).good());
     }},
};

constexpr std::size_t kSize = 25'000; // several windows of any buffer

std::string someLines() {
    std::string text;
    for (int number = 0; text.size() < kSize; ++number)
        text += std::to_string(number * 7919) + (number % 5 == 0 ? "\r\n" : " ");
    return text;
}

TEST(FileStream, ReadsAsAStreamOfTheTextDoes) {
    const ScopedRoot root;
    root.writeFile("file", someLines());
    FileStream file(root.pathOf("file"), kBinary);
    std::istringstream text(someLines());
    EXPECT_EQ(file.rdbuf()->in_avail(), text.rdbuf()->in_avail());
    std::minstd_rand random;
    for (int round = 0; round < 20'000; ++round) {
        const auto& [name, use] = kUses[random() % std::size(kUses)];
        const auto number = static_cast<int>(random() % (round % 2 == 0 ? kSize : 300));
        ASSERT_TRUE(use(file, number) == use(text, number)) << name << ' ' << number;
        ASSERT_EQ(file.rdstate(), text.rdstate()) << name << ' ' << number;
        file.clear();
        text.clear();
        ASSERT_EQ(file.tellg(), text.tellg()) << name << ' ' << number;
    }
}

TEST(FileStream, OpensAndClosesOnce) {
    const ScopedRoot root;
    root.writeFile("file", "text");
    FileStream file(root.pathOf("file"), kBinary | std::ios_base::ate);
    EXPECT_TRUE(file.is_open());
    EXPECT_EQ(file.tellg(), 4);
    file.seekg(std::numeric_limits<std::streamoff>::max()).seekg(1, std::ios_base::cur);
    EXPECT_EQ(file.rdstate(), std::ios_base::failbit);
    file.clear();
    file.close();
    EXPECT_TRUE(file.good() && !file.is_open());
    EXPECT_EQ(file.seekg(0).tellg(), -1);
    file.clear();
    EXPECT_EQ(file.get(), EOF);
    file.clear();
    file.close();
    EXPECT_TRUE(file.fail());
    EXPECT_TRUE(FileStream(root.pathOf("missing"), kBinary).fail());
}

TEST(FileStream, FolderOpensAndCannotBeSized) {
    const ScopedRoot root;
    FileStream folder(root.path(), kBinary);
    EXPECT_TRUE(folder.is_open());
    folder.seekg(0, std::ios_base::end);
    EXPECT_EQ(folder.tellg(), -1);
    EXPECT_FALSE(folder);
}

TEST(FileStream, ReadsNoMoreThanTheFileHadWhenItWasOpened) {
    const ScopedRoot root;
    root.writeFile("file", "12345");
    for (const auto& [size, read] : {std::pair(7, "12345"), {3, "123"}}) {
        FileStream file(root.pathOf("file"), kBinary);
        fs::resize_file(root.nativePathOf("file"), static_cast<std::uintmax_t>(size));
        std::string line;
        EXPECT_TRUE(std::getline(file, line).eof());
        EXPECT_EQ(line, read);
    }
}

TEST(FileStream, NeverWaitsWhenThePathIsSwappedForAPipe) {
    const ScopedRoot root;
    root.writeFile("file", "x");
    root.makePipe("pipe");
    const auto before = testsupport::openDescriptors();
    std::jthread swapping([&](const std::stop_token& stop) {
        while (!stop.stop_requested())
            for (const char* target : {"file", "pipe"}) {
                fs::create_symlink(target, root.nativePathOf("new"));
                fs::rename(root.nativePathOf("new"), root.nativePathOf("link"));
            }
    });
    for (int round = 0; round < 5000; ++round) {
        FileStream file(root.pathOf("link"), kBinary);
        EXPECT_TRUE(!file.is_open() || file.get() == 'x');
    }
    swapping.request_stop();
    swapping.join();
    EXPECT_EQ(testsupport::openDescriptors(), before);
}

/// Takes a lease on a file, says through `report` whether it could, and gives it up when asked to.
[[noreturn]] void holdLease(const fs::path& path, int report) {
    sigset_t asked;
    sigemptyset(&asked);
    sigaddset(&asked, SIGIO);
    sigprocmask(SIG_BLOCK, &asked, nullptr);
    const int file = ::open(path.c_str(), O_RDWR);
    const bool isHeld = ::fcntl(file, F_SETLEASE, F_WRLCK) == 0;
    if (::write(report, &isHeld, sizeof(isHeld)) == sizeof(isHeld) && isHeld)
        sigwaitinfo(&asked, nullptr);
    ::_exit(0);
}

TEST(FileStream, WaitsForALeaseToBeGivenUp) {
    const ScopedRoot root;
    root.writeFile("file", "x");
    std::array<int, 2> reports{};
    ASSERT_EQ(::pipe(reports.data()), 0);
    const pid_t holder = ::fork();
    if (holder == 0)
        holdLease(root.nativePathOf("file"), reports[1]);
    ::close(reports[1]);
    bool isHeld = false;
    EXPECT_EQ(::read(reports[0], &isHeld, sizeof(isHeld)), sizeof(isHeld));
    ::close(reports[0]);
    EXPECT_TRUE(!isHeld || FileStream(root.pathOf("file"), kBinary).get() == 'x');
    EXPECT_EQ(::waitpid(holder, nullptr, 0), holder);
    if (!isHeld)
        GTEST_SKIP() << "no lease can be had on the files of this system";
}

} // namespace
