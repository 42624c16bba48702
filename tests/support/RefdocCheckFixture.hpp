#pragma once

#include <sstream>
#include <string>

#include "support/RefdocFixture.hpp"

namespace testsupport {

inline const std::string kHeader = R"({"productName": "P", "baseCode": "B", "helpFolder": "alpha",
"helpLocation": "h", "refItems": [)";

/// A resource file whose items begin on the third line.
inline std::string withItems(const std::string& items, const std::string& more = {}) {
    return kHeader + '\n' + items + "]" + more + '}';
}

inline const std::string kSpin = R"({"name": "spin", "refpurpose": "p", "href": "a.html"})";
inline const std::string kPage = R"({"href": "a.html", "refpurpose": "p"})";

class RefdocCheck : public Refdoc {
protected:
    RefdocCheck() { reset(); }

    /// Leaves the root with one sound lookup file and one sound full reference file.
    void reset() const {
        root_.remove("docCatalog");
        root_.lookupFile("alpha.json", withItems(kSpin));
        root_.referenceFile("alpha.json", withItems(kPage));
    }

    /// The findings, one per line, without the path of the catalog folders and without the summary.
    std::string findings(Words options = {}) const {
        options.insert(options.begin(), "check");
        std::istringstream lines(refdoc(options).output);
        const std::string folder = root_.nativePathOf("docCatalog/").string();
        std::string result;
        for (std::string line; std::getline(lines, line);)
            if (line.starts_with(folder))
                result += line.substr(folder.size()) + '\n';
        return result;
    }
};

} // namespace testsupport
