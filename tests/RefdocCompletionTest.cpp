#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>
#include <gtest/gtest.h>

#include "refdoc/completion/ShellWords.hpp"
#include "support/RefdocFixture.hpp"

namespace {

using testsupport::ProcessCall;
using testsupport::Refdoc;

/// Types keys into real shells.
class RefdocInShell : public Refdoc, public testing::WithParamInterface<std::string> {
protected:
    void documentNames(const std::string& helpFolder, const std::vector<std::string>& names) const {
        boost::json::array items;
        for (const std::string& name : names)
            items.push_back({{"name", name}, {"refpurpose", name}, {"href", "h"}});
        root_.lookupFile("gamma.json",
                         boost::json::serialize(boost::json::object{{"productName", "Gamma"},
                                                                    {"baseCode", "G"},
                                                                    {"helpFolder", helpFolder},
                                                                    {"helpLocation", "h"},
                                                                    {"refItems", items}}));
    }

    void SetUp() override {
        if (!std::filesystem::exists("/usr/bin/" + GetParam()))
            GTEST_SKIP() << GetParam() << " is not installed";
        const std::filesystem::path client = "bin/refdoc";
        root_.writeFile(client, "#!/bin/sh\n"
                                "[ \"$1\" = complete ] && exec '" REFDOC_PROGRAM "' \"$@\"\n"
                                "for word; do :; done\n"
                                "printf '%s\\0' \"$word\" >>received\n");
        std::filesystem::permissions(root_.nativePathOf(client), std::filesystem::perms::owner_all);
    }

    /// The last argument of each run of the client that the lines cause, without the "/" that
    /// bash alone appends to a folder.
    std::vector<std::string> received(const std::string& locale,
                                      const std::vector<std::string>& lines) {
        const bool zsh = GetParam() == "zsh";
        const std::string setup = zsh ? "fpath=(" REFDOC_COMPLETIONS " $fpath); autoload -Uz "
                                        "compinit; compinit -u -D"
                                      : "source " REFDOC_COMPLETIONS "/refdoc.bash";
        const std::string root = root_.nativePathOf("").string();
        ProcessCall call{"/usr/bin/" + GetParam(),
                         {zsh ? "-f" : "--norc", "-i"},
                         {{"LC_ALL", locale},
                          {"HOME", root},
                          {"INPUTRC", "/dev/null"},
                          {"HISTFILE", std::nullopt},
                          {"TERM", "xterm"}}};
        call.typed = "cd " + refdoc::shellQuoted(root) + "; PATH=$PWD/bin:$PATH; " + setup + '\r';
        for (const std::string& line : lines)
            call.typed += line + '\r';
        call.typed += "exit\r'\rexit\r\"\rexit\r"; // even where a quote was left open
        shown_ = testsupport::runOnTerminal(call, 200).output;
        std::ifstream record(root_.nativePathOf("received"), std::ios::binary);
        std::vector<std::string> words;
        for (std::string word; std::getline(record, word, '\0');)
            words.push_back(word.substr(0, word.find_last_not_of('/') + 1));
        root_.remove("received");
        return words;
    }

    std::string shown_;
};

INSTANTIATE_TEST_SUITE_P(Shells, RefdocInShell, testing::Values("bash", "zsh"),
                         [](const auto& shell) { return shell.param; });

TEST_P(RefdocInShell, CompletesWhatIsTyped) {
    const struct {
        std::string line;
        std::string received;
    } cases[] = {
        {"refdoc pro\t", "products"},
        {"refdoc lookup --al\t", "--all"},
        {"refdoc --language=j\t", "--language=ja"},
        {"refdoc --root . lookup zo\tA\t", "zoomAll"},
        {"refdoc --root . lookup 'zo\tA\t", "zoomAll"},
        {"refdoc --root . lookup pack::\t", "pack::age"},
        {"refdoc --root=docC\t", "--root=docCatalog"},
        {"refdoc --root docC\t", "docCatalog"},
        {"refdoc check docC\treferenceapi_\t", "docCatalog/referenceapi_lookup"},
    };
    std::vector<std::string> lines;
    std::vector<std::string> expected;
    for (const auto& [line, word] : cases) {
        lines.push_back(line);
        expected.push_back(word);
    }
    EXPECT_EQ(received("C.UTF-8", lines), expected) << shown_;
}

TEST_P(RefdocInShell, RunsNothingThatNamesSay) {
    const std::vector<std::string> names{
        "k0\u200b';touch planted;'", // not printable for bash, nor for any shell in the locale C
        "k1 it's \"q\" \\ x\\",
        "k2$(touch planted)",
        "k3`touch planted`",
        "k4;touch planted;",
        "k5'; touch planted; '",
        "k6\"; touch planted; \"",
        "k7\\'; touch planted; $'\\'",
        "k8!t!!x!",
        "k9 a&b|c>planted<d",
        "kA*?[x]{a,b}~#=@:%^",
        "kB\u00dc'\u00e9",
    };
    const std::vector<std::string> notOffered{"kD\ntouch planted\n", "kE\x1b[2J", "kF\u202e;",
                                              "kG\r"};
    std::vector<std::string> all = names;
    all.insert(all.end(), notOffered.begin(), notOffered.end());
    documentNames("gamma", all);
    const auto isAscii = [](const std::string& name) {
        return std::all_of(name.begin(), name.end(),
                           [](char byte) { return static_cast<signed char>(byte) >= 0; });
    };
    for (const std::string locale : {"C", "C.UTF-8"})
        for (const std::string open : {"", "'", "\"", "$'"}) {
            std::vector<std::string> lines;
            std::vector<std::string> expected;
            for (const std::string& name : all) {
                const std::string typed = name.substr(0, 2);
                const bool offered =
                    std::find(names.begin(), names.end(), name) != names.end() &&
                    (GetParam() == "bash" || locale != "C" || open.size() != 1 || isAscii(name));
                const std::string close =
                    offered || open.empty() ? "" : open.substr(open.size() - 1);
                lines.push_back("refdoc --root . lookup " + open + typed + '\t' + close);
                expected.push_back(offered ? name : typed);
            }
            EXPECT_EQ(received(locale, lines), expected) << locale << open << shown_;
            EXPECT_FALSE(std::filesystem::exists(root_.nativePathOf("planted"))) << locale << open;
        }
}

} // namespace
