#include <filesystem>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/RefdocLookupFixture.hpp"

namespace {

using testsupport::ProcessCall;
using testsupport::RefdocLookup;

constexpr const char* kZsh = "/usr/bin/zsh";

/// Asks bash what completes a command line. COMP_WORDS is what bash makes of the line: words end at
/// blanks, and "=" and ":" stand apart.
class RefdocCompletion : public RefdocLookup {
protected:
    void SetUp() override {
        if (root_.nativePathOf("").string().find(' ') != std::string::npos)
            GTEST_SKIP() << "the words of these lines end at the blank of the temporary folder";
    }

    std::string completions(const std::string& line) const {
        const std::string script = R"(
            source "$1" || exit 9
            COMP_LINE=$2 COMP_POINT=${#2}
            spaced=$(sed -E 's/(=|:+)/ \1 /g' <<<"$2")
            read -ra COMP_WORDS <<<"$spaced"
            [[ $2 == *" " || ${COMP_WORDS[-1]} == = ]] && COMP_WORDS+=("")
            COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
            _refdoc "$3"
            printf '%s|' "${COMPREPLY[@]}")";
        const ProcessCall bash{"/bin/bash",
                               {"--norc", "-c", script, "bash", REFDOC_COMPLETIONS "/refdoc.bash",
                                line, REFDOC_PROGRAM},
                               {{"LC_ALL", "C.UTF-8"}}};
        return outputOf(bash, line);
    }

    /// What zsh's function offers, under the options that zsh sets for such functions. What it
    /// calls to show them works only while a line is edited.
    std::string completionsInZsh(const std::string& line) const {
        const std::string script = R"(
            fpath=("$1" $fpath)
            autoload -Uz compinit && compinit -C -D
            _describe() { print -rn -- "${(pj:|:)${(P@)2}}" }
            _files() { print -rn -- "_files $*" }
            compset() { }
            setopt $_comp_options
            words=(${(z)2})
            [[ $2 == *" " ]] && words+=('')
            words[1]=$3
            CURRENT=$#words
            _refdoc)";
        const ProcessCall zsh{kZsh,
                              {"-f", "-c", script, "zsh", REFDOC_COMPLETIONS, line, REFDOC_PROGRAM},
                              {{"LC_ALL", "C.UTF-8"}}};
        return outputOf(zsh, line);
    }

private:
    static std::string outputOf(const ProcessCall& shell, const std::string& line) {
        const auto result = testsupport::run(shell);
        EXPECT_EQ(result.errors, "") << line;
        return result.output;
    }
};

TEST_F(RefdocCompletion, CompletesWhatTheClientKnows) {
    const std::string root = root_.nativePathOf("").string();
    const struct {
        std::string line;
        std::string completions;
    } cases[] = {
        {"refdoc ", "lookup|show|products|check|"},
        {"refdoc pro", "products|"},
        {"refdoc --l", "--language|"},
        {"refdoc lookup --a", "--all|"},
        {"refdoc lookup --", "--help|--type|--product|--all|--limit|--root|--language|--json|"
                             "--verbose|--version|"},
        {"refdoc --language j", "ja|"},
        {"refdoc --language=j", "ja|"},
        {"refdoc lookup --type me", "method|"},
        {"refdoc --root ROOT lookup --product a", "alpha|"},
        {"refdoc --root ROOT lookup --product A", "AB|AC|"},
        {"refdoc --root ROOT lookup z", "zoom|zoomAll|"},
        {"refdoc --root=ROOT lookup z", "zoom|zoomAll|"},
        {"refdoc lookup --root ROOT z", "zoom|zoomAll|"},
        {"refdoc --root ROOT lookup r", "|"},
        {"refdoc --root ROOT lookup --all r", "rotate|"},
        {"refdoc --root ROOT lookup pack::a", "age|"},
        {"refdoc --root ROOT lookup pack::", "age|"},
        {"refdoc --root ROOT lookup a", "a\\*b|axb|"},
        {"refdoc --root ROOT lookup e", "|"}, // a name with a control character is never offered
        {"refdoc --root ROOT lookup zoom z", "|"},
        {"refdoc --root ROOT show ", "alpha|zeta|beta|"},
        {"refdoc --root ROOT show z", "zeta|zoom|zoomAll|"},
        {"refdoc --root ROOT show alpha z", "zoom|zoomAll|"},
        {"refdoc --root ROOT show beta r", "rotate|"},
        {"refdoc --root ROOT show alpha --j", "--json|"},
        {"refdoc --root ROOT show alpha -- z", "zoom|zoomAll|"},
        {"refdoc --root ROOT/docC", "ROOT/docCatalog|"},
        {"refdoc --root=ROOT/docC", "ROOT/docCatalog|"},
        {"refdoc --root 'ROOT' lookup unz", "|"},
        {"refdoc --root 'ROOT' lookup Unz", "Unzoom|"},
        {"refdoc --root /does/not/exist lookup z", "|"},
        {"refdoc --language xx lookup z", "|"},
        {"refdoc products z", "|"},
        {"refdoc check --le", "--level|"},
        {"refdoc check --level w", "warning|"},
        {"refdoc check ROOT/docC", "ROOT/docCatalog|"},
        {"refdoc frob z", "|"},
    };
    const auto withRoot = [&](std::string text) {
        for (std::size_t at = text.find("ROOT"); at != text.npos; at = text.find("ROOT"))
            text.replace(at, 4, root.substr(0, root.find_last_not_of('/') + 1));
        return text;
    };
    for (const auto& [line, expected] : cases)
        EXPECT_EQ(completions(withRoot(line)), withRoot(expected)) << line;
}

TEST_F(RefdocCompletion, CompletesInZsh) {
    if (!std::filesystem::exists(kZsh))
        GTEST_SKIP() << kZsh << " is not installed";
    const std::string root = root_.nativePathOf("").string();
    const struct {
        std::string line;
        std::string completions;
    } cases[] = {
        {"refdoc pro", "products:List what is installed and what is documented"},
        {"refdoc lookup --al", "--all:Also names of products that are not installed"},
        {"refdoc --language=j", "--language=ja:"},
        {"refdoc --root " + root + " lookup Unz", "Unzoom:reduce a view"},
        {"refdoc --root '" + root + "' lookup Unz", "Unzoom:reduce a view"},
        {"refdoc --root " + root + " lookup pack::a", "pack\\:\\:age:a package"},
        {"refdoc --root ", "_files -/"},
        {"refdoc --root=/x", "_files -/"},
        {"refdoc check ", "_files -/"},
    };
    for (const auto& [line, expected] : cases)
        EXPECT_EQ(completionsInZsh(line), expected) << line;
    EXPECT_THAT(completionsInZsh("refdoc "), testing::StartsWith("lookup:"));
}

TEST_F(RefdocLookup, ExplainsCompletionsInTheLanguageTyped) {
    EXPECT_EQ(refdoc({"complete", "4", "--", "refdoc", "--root", root_.nativePathOf("").string(),
                      "lookup", "Unz"})
                  .output,
              "Unzoom\treduce a view\n");
    EXPECT_EQ(refdoc({"complete", "6", "--", "refdoc", "--root", root_.nativePathOf("").string(),
                      "--language", "ja", "lookup", "Unz"})
                  .output,
              "Unzoom\t表示を縮小する\n");
}

} // namespace
