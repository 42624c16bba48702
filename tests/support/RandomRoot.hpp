#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>

#include "support/RandomDamage.hpp"
#include "support/ZipFile.hpp"

/// Random lookup files, with few names, keys and languages, so that many coincide.
namespace testsupport {

struct RandomText {
    std::string leaf; ///< empty for a text of a plain file
    std::string content;
};

struct RandomFile {
    std::string name;
    std::string bytes;
    std::vector<RandomText> texts;

    bool isPackage() const { return name.ends_with(".zip"); }
};

inline std::string oneOf(const std::vector<std::string>& choices, Random& random) {
    return choices[below(choices.size(), random)];
}

inline boost::json::value randomItem(Random& random) {
    boost::json::object item{{"name", oneOf({"a", "b", "c"}, random)},
                             {"refpurpose", oneOf({"p", "q"}, random)},
                             {"href", oneOf({"1.html", "2.html", "3.html"}, random)}};
    if (below(4, random) == 0)
        item["type"] = oneOf({"class", "tool", "unheard of"}, random);
    if (below(4, random) == 0)
        item["deprecated"] = false;
    return item;
}

inline boost::json::object randomDocument(Random& random) {
    boost::json::array items;
    for (std::size_t count = below(5, random); count > 0; --count)
        items.push_back(randomItem(random));
    return {{"productName", oneOf({"P", "Q"}, random)},
            {"baseCode", oneOf({"k", "l", "m", "n"}, random)},
            {"helpFolder", oneOf({"k", "l", "m"}, random)},
            {"helpLocation", "h"},
            {"refItems", std::move(items)}};
}

inline std::string randomText(Random& random) {
    boost::json::object main = randomDocument(random);
    boost::json::array packages;
    for (std::size_t count = below(3, random); count > 0; --count)
        packages.push_back(randomDocument(random));
    main["supportPackages"] = std::move(packages);
    return below(5, random) == 0 ? mutatedText(main, random) : boost::json::serialize(main);
}

inline void damageLeaf(ZipBytes& bytes, std::size_t leaf, Random& random) {
    switch (below(12, random)) {
    case 0:
        bytes.breakChecksum(leaf);
        break;
    case 1:
        bytes.markEncrypted(leaf);
        break;
    case 2:
        bytes.setMethod(leaf, 77);
        break;
    case 3:
        bytes.setDeclaredSize(leaf, 5);
        break;
    case 4:
        bytes.setContentByte(leaf, 0xFF);
        break;
    default:
        break;
    }
}

inline RandomFile randomPackage(std::string name, Random& random) {
    std::set<std::string> leaves;
    for (std::size_t count = 1 + below(4, random); count > 0; --count)
        leaves.insert(oneOf({"", "", "d/"}, random) + oneOf({"x", "y"}, random) +
                      oneOf({".json", "_ja.json", "_de.json", ".JSON", ".zip", ".txt"}, random));
    RandomFile package{std::move(name), {}, {}};
    ZipFile file;
    for (const std::string& leaf : leaves) {
        package.texts.push_back({leaf, randomText(random)});
        file.add(leaf, package.texts.back().content);
    }
    ZipBytes bytes = file.build();
    damageLeaf(bytes, below(leaves.size(), random), random);
    if (below(12, random) == 0)
        bytes.truncate(below(bytes.size(), random));
    package.bytes = bytes.bytes();
    return package;
}

inline std::vector<RandomFile> randomFiles(Random& random) {
    std::set<std::string> names;
    for (std::size_t count = 2 + below(4, random); count > 0; --count)
        names.insert(oneOf({"a", "b"}, random) + oneOf({"", "", "_ja", "_de"}, random) +
                     oneOf({".json", ".zip"}, random));
    std::vector<RandomFile> files;
    for (const std::string& name : names) {
        if (name.ends_with(".zip")) {
            files.push_back(randomPackage(name, random));
        } else {
            const std::string text = randomText(random);
            files.push_back({name, text, {{{}, text}}});
        }
    }
    return files;
}

/// The language that a stem ends with.
inline std::string languageOf(const std::string& fileName) {
    const std::string stem = fileName.substr(0, fileName.rfind('.'));
    for (const char* language : {"ja", "de"})
        if (stem.ends_with(std::string("_") + language))
            return language;
    return "en";
}

/// The language that a text counts as, and the languages in which it is collected.
struct Audience {
    std::string language;
    std::set<std::string> readers;
};

inline Audience audienceOf(const RandomFile& file, const RandomText& text) {
    const std::string own = languageOf(file.name);
    const std::string leaf = languageOf(text.leaf);
    const bool isSingle = file.texts.size() == 1;
    if (file.isPackage() && !text.leaf.ends_with(".json") && !text.leaf.ends_with(".zip"))
        return {};
    const std::string language = !file.isPackage() || (isSingle && own == "en") ? own : leaf;
    if (own != "en") {
        const bool isFillIn = file.isPackage() && !isSingle && language == "en";
        return language == own || isFillIn ? Audience{language, {own}} : Audience{};
    }
    return {language, language == "en" ? std::set<std::string>{"en", "ja", "de"}
                                       : std::set<std::string>{language}};
}

} // namespace testsupport
