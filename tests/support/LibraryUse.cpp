#include "support/LibraryUse.hpp"

#include <string>

#include <boost/json/value.hpp>

#include "environment/Services.hpp"
#include "reference/docparser/DocResourceParser.hpp"
#include "reference/docparser/ParsingTools.hpp"
#include "support/LookupFixture.hpp"
#include "support/ResourceNotation.hpp"
#include "support/ZipFile.hpp"

namespace testsupport {

namespace {

using namespace reference::docparser::DocResourceParser;

bool readAsJapanese(const ScopedRoot& root) {
    environment::Services services;
    services.docLanguage = [] { return std::u16string(u"ja"); };
    services.docDataRoot = [&root] { return root.path(); };
    environment::setServices(services);
    restoreDefaultSettings();
    return notationOf(getResourceLookupFiles()) ==
               "+f:Ja n=1@Ja,2@En | +p:Zip m=1@Zip | -q:Zip n=1@Zip" &&
           notationOf(getResourceFile(u"abc")) == "f:Ja a=1 b=4 c=5 d=3" &&
           isProductInstalled(u"f") && isProductInstalled(u"p") &&
           getTopLevelProducts()->size() == 1;
}

bool readWhatIsMissing(const ScopedRoot& root) {
    setTestProducts({}, {});
    setReferenceRoot(root.pathOf("missing"));
    clearSupportPackageCache();
    return notationOf(getResourceLookupFiles()).empty() && getResourceFile(u"abc").empty() &&
           openAndReadFile(root.pathOf("missing")).empty() &&
           isValidFilename(fl::filesystem::upath(u"a.json"));
}

bool useTools() {
    namespace tools = ParsingTools;
    const boost::json::value value{{"k", "\xC3\xA9"}, {"l", {1}}};
    return tools::getFluString(value.as_object(), "k", tools::StringParsingType::Utf8) ==
               u"\u00E9" &&
           tools::getJsonArray(value, "l").size() == 1 && !tools::getSupportedDocLocales().empty();
}

bool goBackToTheInstallation() {
    environment::resetServices();
    restoreDefaultSettings();
    return getReferenceRoots()->referenceApiFolder.ends_with(
        u"/share/reference-docparser/docroot/docCatalog/referenceapi");
}

} // namespace

void writeDocumentation(const ScopedRoot& root) {
    root.lookupFile("a.json", lookupText("f:En n=1,2 | p:En m=1"));
    root.lookupFile("a_ja.json", lookupText("f:Ja n=1"));
    root.lookupFile("a_de.json", lookupText("f:De n=1"));
    root.lookupFile("broken.json", "no JSON");
    root.lookupFile("broken.zip", "no zip");
    ZipFile()
        .add("x.json", lookupText("q:Zip n=1 | p:Zip m=1"))
        .write(root.lookupFolder() / "b.zip");
    const std::string bad = lookupText("g:Bad n=1");
    ZipFile()
        .add("x.json", bad)
        .build()
        .breakChecksum(0)
        .write(root.lookupFolder() / "broken_entry.zip");
    ZipFile().add("x.json", bad).build().truncate(60).write(root.lookupFolder() / "truncated.zip");
    root.referenceFile("abc.json", referenceText("f:En a=1 b=2 d=3"));
    root.referenceFile("abc_ja.json", referenceText("f:Ja b=4 c=5"));
    root.writeFile("installedProducts.json", R"([{"shortName": "f"}])");
    root.makeFolder("supportPackages/p");
}

bool useTheWholeLibrary(const ScopedRoot& root) {
    return readAsJapanese(root) && readWhatIsMissing(root) && useTools() &&
           goBackToTheInstallation();
}

} // namespace testsupport
