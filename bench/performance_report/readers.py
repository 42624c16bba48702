"""The readers that the loads are measured with: the name of each, and what it does."""

from dataclasses import dataclass


@dataclass(frozen=True)
class Reader:
    label: str
    what: str


LIBRARY = "library"
YARDSTICK = "yardstick"
PROGRAM = "program"

READERS = {
    LIBRARY: Reader(
        "docparser",
        "This library. It finds the files, reads and parses them, checks the kind of every member, "
        "builds the records, finds out what is installed and merges all by product.",
    ),
    YARDSTICK: Reader(
        "yardstick",
        "What the others are compared with. It reads the files, parses them with Boost.JSON into an "
        "arena, and builds the same records out of texts that were split beforehand. These lie in "
        "memory of their own, so a reader whose texts are still in the caches can be faster.",
    ),
    "parse": Reader(
        "bare parse",
        "Reads the files and parses them with Boost.JSON into an arena. It builds no records; "
        "every reader on Boost.JSON does at least this.",
    ),
    "boost_json": Reader(
        "Boost.JSON",
        "What a competent user of Boost.JSON writes: `parse` as its manual shows it, then the "
        "records out of its values. No kinds are checked but by the JSON library, nothing is merged.",
    ),
    "boost_json_arena": Reader(
        "Boost.JSON, arena", "The same program with a `monotonic_resource` for the tree."
    ),
    PROGRAM: Reader(
        "program",
        "The same with an arena, beginning where the library does: it lists the folder, and reads each "
        "file into one buffer with four system calls. It is not wary of pipes, and does not ask what "
        "is installed.",
    ),
    "rapidjson": Reader(
        "RapidJSON", "The same program on RapidJSON's document, which is parsed in situ."
    ),
    "simdjson": Reader(
        "simdjson",
        "The same program on simdjson's on-demand documents: lookups in one pass over their members, "
        "reference items by name, which costs more where members are missing. Its parser stays for "
        "the next file, and counts in what is held.",
    ),
    "nlohmann": Reader("nlohmann/json", "The same program on `nlohmann::json`."),
}


def label(reader: str) -> str:
    return READERS[reader].label if reader in READERS else reader
