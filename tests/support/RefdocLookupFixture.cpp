#include "support/RefdocLookupFixture.hpp"

#include <sstream>

#include "support/ZipFile.hpp"

namespace testsupport {

namespace {

constexpr const char* kInstalled = R"([
  {"shortName": "alpha", "displayName": "Alpha"},
  {"shortName": "gamma", "displayName": "Gamma \u001b[2J"},
  {"shortName": "zeta", "displayName": "Zeta"}])";

constexpr const char* kAlpha = R"({
  "productName": "Alpha Tools", "baseCode": "AL", "helpFolder": "alpha", "helpLocation": "h",
  "refItems": [
    {"name": "zoom", "type": "function", "fcntype": "static", "refpurpose": "enlarge a view", "href": "zoom.html",
     "deprecated": true},
    {"name": "Zoom", "type": "class", "refpurpose": "enlarger", "href": "class.html"},
    {"name": "zoomAll", "type": "function", "refpurpose": "enlarge all views", "href": "all.html"},
    {"name": "Unzoom", "type": "function", "refpurpose": "reduce a view", "href": "zoom.html"},
    {"name": "Stra\u00dfe", "refpurpose": "street", "href": "street.html"},
    {"name": "\u00dcber", "refpurpose": "over", "href": "over.html"},
    {"name": "a*b", "type": "operator", "refpurpose": "multiply", "href": "times.html"},
    {"name": "axb", "type": "operator", "refpurpose": "cross", "href": "cross.html"},
    {"name": "[", "type": "command", "refpurpose": "test", "href": "bracket.html"},
    {"name": "pack::age", "type": "namespace", "refpurpose": "a package", "href": "p.html"},
    {"name": "ghost", "refpurpose": "has no entry", "href": "ghost.html"},
    {"name": "e\u001bsc", "refpurpose": "evil \u001b[31m\ttext\nline", "href": "esc.html"}],
  "supportPackages": [
    {"productName": "Alpha Board", "baseCode": "AB", "helpFolder": "alpha", "helpLocation": "h",
     "refItems": [{"name": "board", "type": "object", "refpurpose": "a board", "href": "zoom.html"}]},
    {"productName": "Alpha Card", "baseCode": "AC", "helpFolder": "alpha", "helpLocation": "h",
     "refItems": [{"name": "card", "type": "object", "refpurpose": "a card", "href": "card.html"}]}]})";

constexpr const char* kAlphaJapanese = R"({
  "productName": "アルファ", "baseCode": "AL", "helpFolder": "alpha", "helpLocation": "h",
  "refItems": [{"name": "Unzoom", "type": "function", "refpurpose": "表示を縮小する", "href": "zoom.html"}]})";

constexpr const char* kBeta = R"({
  "productName": "Beta", "baseCode": "BE", "helpFolder": "beta", "helpLocation": "h",
  "refItems": [{"name": "zoom", "type": "function", "refpurpose": "come nearer", "href": "zoom.html"},
               {"name": "rotate", "type": "function", "refpurpose": "turn round", "href": "r.html"}]})";

constexpr const char* kZeta = R"({
  "productName": "Zeta", "baseCode": "ZE", "helpFolder": "zeta", "helpLocation": "h",
  "refItems": [{"name": "zoom", "type": "command", "refpurpose": "zoom the screen", "href": "z.html"}]})";

constexpr const char* kZetaGerman = R"({
  "productName": "Zeta", "baseCode": "ZE", "helpFolder": "zeta", "helpLocation": "h",
  "refItems": [{"name": "zoom", "type": "command", "refpurpose": "Anzeige zoomen", "href": "z.html"}]})";

constexpr const char* kBetaEntries = R"({
  "productName": "Beta", "baseCode": "BE", "helpFolder": "beta", "helpLocation": "h",
  "refItems": [{"href": "r.html", "refpurpose": "turn round", "refentity": [{"name": "other"}]}]})";

constexpr const char* kZetaEntries = R"({
  "productName": "Zeta", "baseCode": "ZE", "helpFolder": "zeta", "helpLocation": "h",
  "refItems": [{"href": "z.html", "refpurpose": "zoom the screen", "refentity": [{"name": "zoom"}]}]})";

} // namespace

RefdocLookup::RefdocLookup() {
    root_.writeFile("installedProducts.json", kInstalled);
    root_.makeFolder("supportPackages/AB");
    root_.lookupFile("alpha.json", kAlpha);
    root_.lookupFile("alpha_ja.json", kAlphaJapanese);
    root_.lookupFile("beta.json", kBeta);
    root_.lookupFile("stray.json", "{");
    ZipFile()
        .add("zeta.json", kZeta)
        .add("zeta_de.json", kZetaGerman)
        .write(root_.lookupFolder() / "zeta.zip");
    root_.referenceFile("beta.json", kBetaEntries);
    root_.referenceFile("zeta.json", kZetaEntries);
}

std::string RefdocLookup::found(Words arguments) const {
    arguments.insert(arguments.begin(), "lookup");
    std::istringstream lines(refdoc(arguments).output);
    std::string result;
    for (std::string line; std::getline(lines, line);)
        result += line.substr(0, line.find('\t')) + '/' + line.substr(line.rfind('\t') + 1) + ' ';
    return result;
}

} // namespace testsupport
