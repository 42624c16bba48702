#include "CollectionRoot.hpp"

#include <algorithm>
#include <array>
#include <utility>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>

#include "support/ZipFile.hpp"

namespace fuzz {

namespace {

namespace json = boost::json;
using testsupport::ZipBytes;
using testsupport::ZipFile;
using testsupport::ZipMethod;

using Texts = std::vector<std::string>;

// Few of each kind, so that keys, names and links coincide. The two names beyond ASCII have
// opposite orders in UTF-8 and in UTF-16.
const Texts kKeys{"f", "g", "p", "F", "f1", ""};
const Texts kNames{"n", "m", "a\U0001F600", "a\uFB00", "N", ""};
const Texts kHrefs{"h1", "h2", "h3", "h4", "H1", ""};
const Texts kStems{"a", "b", "a.b", "a\U0001F600", "a\uFB00", ""};
const Texts kSuffixes{"", "_ja", "_de", "_BR", "_pt_BR", "_en", "_JA", "_ja_de", "_"};
const Texts kExtensions{".json", ".zip", ".JSON", ".txt", "", ".json.bak", ".tar.zip"};
const Texts kFolders{"", "d/", "d_ja/", "d/e.json/"};
const Texts kLanguages{"en", "ja", "de", "BR", "pt_BR", "xx", ""};
const std::vector<Texts> kLanguageLists{
    {"en", "ja", "de"}, {"BR", "en", "pt_BR"}, {"ja"}, {}, {"en", "", "en"}};
const Texts kTypes{"function", "class", "app", "no type"};
const Texts kFunctionTypes{"method", "static", "no type"};

constexpr std::size_t kMaximumFiles = 6;
constexpr std::size_t kMaximumLeaves = 4;
constexpr std::size_t kMaximumLookups = 5;
constexpr std::size_t kMaximumSeries = 32;
constexpr std::size_t kMaximumRuns = 4;

/// Every text that distinguishes documents and lookups gets the next number.
class Numbers {
public:
    std::string next() { return std::to_string(++last_); }

private:
    std::size_t last_ = 0;
};

/// What is wrong with a text; unknown members are allowed.
enum class TextDamage {
    None,
    UnknownMembers,
    Empty,
    CutShort,
    ByteOrderMark,
    MissingBaseCode,
    MissingHref,
    NullItems
};

/// One choice out of sixteen is the first damage after `None`, the next the second, and so on.
template <typename Damage>
Damage chooseDamage(Choices& choices, Damage last) {
    const std::size_t choice = choices.below(16);
    return choice <= static_cast<std::size_t>(last) ? static_cast<Damage>(choice) : Damage::None;
}

Texts chooseSome(Choices& choices, const Texts& texts) {
    Texts some;
    const std::size_t bits = choices.below(std::size_t{1} << texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i)
        if ((bits >> i & 1) != 0)
            some.push_back(texts[i]);
    return some;
}

json::object chooseLookup(Choices& choices, Numbers& numbers) {
    const std::string& name = choices.from(kNames);
    const std::string& href = choices.from(kHrefs);
    const std::size_t kinds = choices.below(kTypes.size() * kFunctionTypes.size() * 2);
    json::object lookup{{"name", name},
                        {"refpurpose", numbers.next()},
                        {"href", href},
                        {"type", kTypes[kinds / 2 / kFunctionTypes.size()]},
                        {"fcntype", kFunctionTypes[kinds / 2 % kFunctionTypes.size()]}};
    if (kinds % 2 == 1)
        lookup["deprecated"] = false;
    return lookup;
}

json::object chooseDocument(Choices& choices, Numbers& numbers) {
    const std::string& baseCode = choices.from(kKeys);
    const std::string& helpFolder = choices.from(kKeys);
    json::object document{{"productName", numbers.next()},
                          {"baseCode", baseCode},
                          {"helpFolder", helpFolder},
                          {"helpLocation", numbers.next()}};
    json::array lookups;
    for (std::size_t count = choices.below(kMaximumLookups + 1); count > 0; --count)
        lookups.push_back(chooseLookup(choices, numbers));
    document["refItems"] = lookups;
    return document;
}

/// Damage to one document that costs the whole file.
void damage(json::object& document, TextDamage damage) {
    if (damage == TextDamage::UnknownMembers)
        document["unknown"] = {{"refItems", 1}};
    if (damage == TextDamage::MissingBaseCode)
        document.erase("baseCode");
    if (damage == TextDamage::MissingHref)
        document["refItems"].as_array().push_back({{"name", "n"}, {"refpurpose", ""}});
    if (damage == TextDamage::NullItems)
        document["refItems"] = nullptr;
}

/// The text of a lookup file: the product's own document and those of up to two support packages,
/// the last of which is the damaged one.
std::string chooseText(Choices& choices, Numbers& numbers) {
    const auto textDamage = chooseDamage(choices, TextDamage::NullItems);
    std::size_t packageCount = choices.below(4) % 3;
    json::object main = chooseDocument(choices, numbers);
    json::array packages;
    for (; packageCount > 0; --packageCount)
        packages.push_back(chooseDocument(choices, numbers));
    damage(packages.empty() ? main : packages.back().as_object(), textDamage);
    if (!packages.empty())
        main["supportPackages"] = packages;
    const std::string text = json::serialize(main);
    if (textDamage == TextDamage::Empty)
        return {};
    if (textDamage == TextDamage::CutShort)
        return text.substr(0, text.size() - 1);
    return textDamage == TextDamage::ByteOrderMark ? "\xEF\xBB\xBF" + text : text;
}

std::string chooseFileName(Choices& choices) {
    const std::string& stem = choices.from(kStems);
    const std::string& suffix = choices.from(kSuffixes);
    return stem + suffix + choices.from(kExtensions);
}

Leaf chooseLeaf(Choices& choices, Numbers& numbers) {
    const std::string& folder = choices.from(kFolders);
    const std::string name = folder + chooseFileName(choices);
    const LeafDamage damage = chooseDamage(choices, LeafDamage::Method);
    const bool isDeflated = choices.yes();
    // An entry must have a name.
    return {name.empty() ? "a.json" : name, chooseText(choices, numbers), damage, isDeflated};
}

/// Appends lookups of one name whose links are all different, all the same, or repeat in turn.
void appendRun(json::array& lookups, Choices& choices, Numbers& numbers) {
    const std::string& name = kNames[choices.below(2)];
    const std::size_t length = choices.below(8);
    const std::size_t count = length < 7 ? length : choices.below(64);
    const std::size_t first = choices.below(8);
    const std::size_t step = choices.below(3);
    const std::size_t period = 1 + choices.below(64);
    for (std::size_t i = 0; i < count; ++i)
        lookups.push_back({{"name", name},
                           {"refpurpose", numbers.next()},
                           {"href", 'h' + std::to_string((first + i * step) % period)}});
}

/// A package of many documents with two keys, English and localized, that are merged again and
/// again with lists of all lengths.
std::vector<Leaf> chooseSeries(Choices& choices, Numbers& numbers) {
    std::vector<Leaf> leaves;
    for (std::size_t count = 1 + choices.below(kMaximumSeries); count > 0; --count) {
        const bool isLocalized = choices.yes();
        json::object document{{"productName", numbers.next()},
                              {"baseCode", ""},
                              {"helpFolder", kKeys[choices.below(4) / 3]},
                              {"helpLocation", ""}};
        json::array lookups;
        for (std::size_t runs = choices.below(kMaximumRuns + 1); runs > 0; --runs)
            appendRun(lookups, choices, numbers);
        document["refItems"] = lookups;
        leaves.push_back({isLocalized ? "a_ja.json" : "a.json", json::serialize(document),
                          LeafDamage::None, false});
    }
    return leaves;
}

/// One choice out of sixteen is a series.
std::vector<Leaf> chooseLeaves(Choices& choices, Numbers& numbers) {
    const std::size_t choice = choices.below(256);
    if (choice >= 240)
        return chooseSeries(choices, numbers);
    std::vector<Leaf> leaves;
    for (std::size_t count = 1 + choice % kMaximumLeaves; count > 0; --count)
        leaves.push_back(chooseLeaf(choices, numbers));
    return leaves;
}

FileKind chooseKind(Choices& choices, const std::string& name) {
    const bool mayBePackage = name.ends_with(".zip");
    switch (choices.below(16)) {
    case 1:
        return FileKind::Folder;
    case 2:
        return FileKind::CutPackage;
    case 3:
        return mayBePackage ? FileKind::Text : FileKind::Package;
    default:
        return mayBePackage ? FileKind::Package : FileKind::Text;
    }
}

LookupFile chooseFile(Choices& choices, Numbers& numbers) {
    LookupFile file{chooseFileName(choices), FileKind::Text, {}, {}};
    file.kind = chooseKind(choices, file.name);
    if (file.kind == FileKind::Text)
        file.text = chooseText(choices, numbers);
    if (file.kind == FileKind::Package || file.kind == FileKind::CutPackage)
        file.leaves = chooseLeaves(choices, numbers);
    return file;
}

Host chooseHost(Choices& choices) {
    const Texts& languages = choices.from(kLanguageLists);
    const std::string& language = choices.from(kLanguages);
    const Texts products = chooseSome(choices, kKeys);
    const Texts packages = chooseSome(choices, kKeys);
    const FailingService failing = chooseDamage(choices, FailingService::Languages);
    return {languages, language, products, packages, failing, 1 + choices.below(4)};
}

void damage(ZipBytes& package, std::size_t entry, LeafDamage damage) {
    constexpr std::uint16_t kUnknownMethod = 77;
    if (damage == LeafDamage::Checksum)
        package.breakChecksum(entry);
    if (damage == LeafDamage::Encryption)
        package.markEncrypted(entry);
    if (damage == LeafDamage::Method)
        package.setMethod(entry, kUnknownMethod);
}

std::string bytesOf(const std::vector<Leaf>& leaves) {
    ZipFile file;
    for (const Leaf& leaf : leaves) {
        const bool isFolder = leaf.name.ends_with('/');
        file.add(leaf.name, isFolder ? std::string() : leaf.text,
                 leaf.isDeflated ? ZipMethod::Deflated : ZipMethod::Stored);
    }
    ZipBytes package = file.build();
    for (std::size_t i = 0; i < leaves.size(); ++i)
        damage(package, i, leaves[i].damage);
    return package.bytes();
}

} // namespace

CollectionRoot chooseRoot(Choices& choices) {
    CollectionRoot root{chooseHost(choices), {}};
    Numbers numbers;
    while (!choices.isUsedUp() && root.files.size() < kMaximumFiles) {
        LookupFile file = chooseFile(choices, numbers);
        const bool isNew = std::none_of(root.files.begin(), root.files.end(),
                                        [&file](const auto& f) { return f.name == file.name; });
        if (isNew && !file.name.empty())
            root.files.push_back(std::move(file));
    }
    return root;
}

void writeFiles(const std::vector<LookupFile>& files, const testsupport::ScopedRoot& root) {
    for (const LookupFile& file : files) {
        if (file.kind == FileKind::Folder) {
            root.makeFolder(root.lookupFolder() / file.name);
            continue;
        }
        std::string bytes = file.kind == FileKind::Text ? file.text : bytesOf(file.leaves);
        if (file.kind == FileKind::CutPackage)
            bytes.resize(bytes.size() / 2);
        root.lookupFile(file.name, bytes);
    }
}

} // namespace fuzz
