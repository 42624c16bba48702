#include "support/RefdocFixture.hpp"

#include <utility>

namespace testsupport {

namespace {

constexpr const char* kEnglish = R"json({
  "productName": "Alpha Tools", "baseCode": "AL", "helpFolder": "alpha", "helpLocation": "help/alpha",
  "refItems": [
    {"href": "zoom.html", "refpurpose": "enlarge a view",
     "refentity": [{"name": "zoom", "type": "function"}, {"name": "Unzoom", "type": "function"}],
     "packagename": "views", "introduced": "2.1", "deprecationstatus": "discouraged",
     "description": "First paragraph.\n\n    verbatim",
     "appthumbnail": {"fileref": "zoom.png", "alt": "A lens"},
     "syntaxgroup": [{"title": "Basic", "syntax": ["zoom(factor)"]}],
     "inputgroup": [
       {"title": "Inputs", "inputs": [{"name": "factor", "purpose": "How much", "value": ["1", "2"],
                                       "defaultvalue": "2"}]},
       {"namevaluepairs": [{"title": "Pairs", "inputs": [{"name": "Mode", "purpose": "How"}]}]}],
     "outputs": [{"name": "view", "purpose": "The new view"}],
     "classpropertygroup": [{"title": "Looks", "classproperty": [{"name": "Color", "purpose": "Its colour",
                                                                  "defaultvalue": "red"}]}],
     "seealso": [{"url": "pan.html", "name": "pan"}, {"url": "https://example.org/", "name": "Site"}],
     "examples": [{"url": "e.html", "open_command": "open e", "title": "Zoom in"}],
     "parameters": [{"name": "limit", "purpose": "The greatest factor", "defaultvalue": "9"}]},
    {"href": "esc.html", "refpurpose": "evil \u001b[31m \u009b2J text\nline", "refentity": [{"name": "e\u001bsc"}]},
    {"href": "bare.html", "refpurpose": "no names"}
  ],
  "supportPackages": [
    {"productName": "Alpha Board", "baseCode": "AB", "helpFolder": "board", "helpLocation": "help/board",
     "refItems": [{"href": "zoom.html", "refpurpose": "enlarge on the board", "refentity": [{"name": "zoom"}]}]}
  ]})json";

constexpr const char* kJapanese = R"({
  "productName": "アルファ", "baseCode": "AL", "helpFolder": "alpha", "helpLocation": "help/alpha",
  "refItems": [{"href": "zoom.html", "refpurpose": "表示を拡大する", "refentity": [{"name": "zoom"}]}]})";

} // namespace

Refdoc::Refdoc() {
    root_.referenceFile("alpha.json", kEnglish);
    root_.referenceFile("alpha_ja.json", kJapanese);
    root_.referenceFile("broken.json", "{\"refItems\": 1}");
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
