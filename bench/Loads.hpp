#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "RecordReader.hpp"

namespace bench {

/// One load that is timed: what is read, from where, and by which reader.
///
/// kind       corpus                                        reader
/// lookup     a root: plain, packages, products16 ...       kReaders, or program
/// reference  all, or one resource: libc, libc_x4 ...       kReaders
/// overlay    a language                                    library, or sum: both files one by one
/// inflate    a root of zip packages                        libzip, libdeflate
struct Load {
    std::string kind;
    std::string corpus;
    std::string reader;
};

/// The readers that build records: the library; the yardstick, which reads, parses, and makes the
/// records from text split beforehand; "parse", which makes none; and the other JSON libraries.
inline const std::vector<std::string> kReaders{"library",    "yardstick",        "parse",
                                               "boost_json", "boost_json_arena", "rapidjson",
                                               "simdjson",   "nlohmann"};

/// What a load gave. It is kept so that freeing it is not timed.
struct Loaded {
    std::vector<Lookups> lookups;
    std::vector<RefItems> refItems;
    std::string content; ///< of an inflated package

    std::size_t countRecords() const;
};

struct PreparedLoad {
    std::function<Loaded()> run;
    std::size_t bytes = 0;       ///< of JSON that is read
    std::size_t largestFile = 0; ///< in bytes of JSON
};

/// Does what is not timed: finds the files, loads the split texts that `splitCorpora` made, and
/// makes the library read this corpus. Throws for an unknown load.
PreparedLoad prepare(const std::filesystem::path& corpora, const Load& load);

/// Makes the split texts of every file, which the yardstick needs.
void splitCorpora(const std::filesystem::path& corpora);

/// Makes the library read this root in this language.
void setLibraryRoot(const std::filesystem::path& root, const std::u16string& language);

} // namespace bench
