#include "support/RefdocFixture.hpp"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

#include "support/ZipFile.hpp"

namespace testsupport {

namespace fs = std::filesystem;

Refdoc::Refdoc() {
    fs::copy(REFDOC_SHOWCASE, root_.nativePathOf(""), fs::copy_options::recursive);
    const fs::path package = root_.lookupFolder() / "zeta.zip";
    ZipFile zip;
    for (const char* name : {"zeta.json", "zeta_de.json"}) {
        std::ifstream entry(package / name);
        zip.add(name, {std::istreambuf_iterator<char>(entry), {}});
    }
    fs::remove_all(package);
    zip.write(package);
}

ProcessCall Refdoc::call(Words arguments, Environment environment) const {
    arguments.insert(arguments.begin(), {"--root", root_.nativePathOf("").string()});
    const Environment usual{{"LC_ALL", "C"},           {"MANWIDTH", std::nullopt},
                            {"COLUMNS", std::nullopt}, {"NO_COLOR", std::nullopt},
                            {"MANPAGER", "cat"},       {"TERM", "xterm"}};
    environment.insert(usual.begin(), usual.end());
    return {REFDOC_PROGRAM, std::move(arguments), std::move(environment)};
}

ProcessResult Refdoc::refdoc(Words arguments, Environment environment) const {
    return run(call(std::move(arguments), std::move(environment)));
}

ProcessResult Refdoc::onTerminal(Words arguments, Environment environment,
                                 unsigned short columns) const {
    return runOnTerminal(call(std::move(arguments), std::move(environment)), columns);
}

} // namespace testsupport
