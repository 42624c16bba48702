#pragma once

#include <string>

#include <gtest/gtest.h>

#include "reference/docparser/DocResourceParser.hpp"
#include "support/LogCapture.hpp"
#include "support/LookupFixture.hpp"
#include "support/ResourceNotation.hpp"
#include "support/ZipFile.hpp"

namespace testsupport {

/// Sound products, plain and zipped, and a sound resource, whose results must stay the same with
/// any files beside them. Those files use keys from "m" to "p" and have names from "m" to "y", so
/// that sound files are read before and after them.
class HostileFixture : public LookupFixture {
protected:
    HostileFixture() { writeSound(); }

    void writeSound() const {
        write({{"a.json", "f:Plain n=1"},
               {"z.json", "g:Plain n=1"},
               {"a.zip/x.json", "h:Zip n=1"},
               {"z.zip/x.json", "q:Zip n=1"}});
        root.referenceFile("sound.json", referenceText("f:En a=1 b=1"));
        root.referenceFile("sound_ja.json", referenceText("f:Ja b=2"));
    }

    /// The collection that also has the documents `odd`, each followed by " | ".
    static std::string soundAnd(const std::string& odd) {
        return "+f:Plain n=1@Plain | +g:Plain n=1@Plain | -h:Zip n=1@Zip | " + odd +
               "-q:Zip n=1@Zip";
    }

    static std::string readSoundResource() {
        return notationOf(reference::docparser::DocResourceParser::getResourceFile(u"sound"));
    }

    /// Keeps the reported problems off the screen.
    LogCapture log;

    static constexpr const char* kSoundResource = "f:Ja a=1 b=2";
};

} // namespace testsupport
