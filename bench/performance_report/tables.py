"""The tables of the page."""

from .formats import (
    Format,
    count,
    gigabytes,
    megabytes,
    microseconds,
    milliseconds,
    number,
    quartiles,
    spread,
    table,
    times,
)
from .readers import LIBRARY, READERS, YARDSTICK, label
from .samples import Ratio, Samples, Value, counter, excess_peak, per_record, time

NAIVE_READERS = ("boost_json", "boost_json_arena", "rapidjson", "simdjson", "nlohmann")
# The yardstick reads the contents of packages from plain files.
YARDSTICK_CORPUS = {"packages": "plain", "one_package": "plain"}
# The memory table has these for all readers, and other loads for the library alone.
MAIN_LOADS = ("lookup/plain", "reference/all")
# Larger loads, and those that they are compared with.
SCALED = {
    "lookup/products4": "lookup/plain",
    "lookup/products16": "lookup/plain",
    "lookup/size4": "lookup/plain",
    "lookup/size16": "lookup/plain",
    "reference/libc_x4": "reference/libc",
    "reference/libc_x16": "reference/libc",
}


def readers_table(samples: Samples, load: str) -> str:
    """A load by every reader."""
    names = [f"{load}/{reader}" for reader in READERS if samples.names(f"{load}/{reader}")]
    header = "reader|ms|of yardstick|quartiles|of docparser|k records/s|µs/record|MB/s".split("|")
    return table(header, (_reader_row(samples, load, name) for name in names))


def _reader_row(samples: Samples, load: str, name: str) -> list[str]:
    of_yardstick = samples.ratio(name, time, f"{load}/{YARDSTICK}", time)
    cost = _cost(samples, name)
    return [
        label(name.rpartition("/")[2]),
        milliseconds(samples.median(name, time)),
        times(of_yardstick),
        quartiles(of_yardstick),
        times(samples.ratio(name, time, f"{load}/{LIBRARY}", time)),
        count(1_000_000 / cost if cost else None),
        number(2, 1_000)(cost),
        number(1)(_megabytes_per_second(samples, name)),
    ]


def _records(samples: Samples, name: str) -> float | None:
    """How many records a load gives, which only its first loads say."""
    _, _, load = name.partition("/")
    return samples.median(f"first_load/{load}", counter("records"))


def _cost(samples: Samples, name: str) -> float | None:
    """Nanoseconds per record; None for a reader without records."""
    duration, records = samples.median(name, time), _records(samples, name)
    return duration / records if duration and records else None


def _megabytes_per_second(samples: Samples, name: str) -> float | None:
    size = samples.median(name, counter("bytes"))
    return 1_000 * size / samples.median(name, time) if size else None


def corpora_table(samples: Samples, group: str) -> str:
    """The lookup files in all forms: how much there is, and how long the library takes."""
    header = "corpus|records|MB|docparser ms|yardstick ms|of yardstick|µs/record".split("|")
    corpora = samples.parts(f"{group}/lookup/")
    return table(header, (_corpus_row(samples, group, corpus) for corpus in corpora))


def _corpus_row(samples: Samples, group: str, corpus: str) -> list[str]:
    name = f"{group}/lookup/{corpus}/{LIBRARY}"
    yardstick = f"{group}/lookup/{YARDSTICK_CORPUS.get(corpus, corpus)}/{YARDSTICK}"
    return [
        f"`{corpus}`",
        count(_records(samples, name)),
        megabytes(samples.median(name, counter("bytes")) or None),
        milliseconds(samples.median(name, time)),
        milliseconds(samples.median(yardstick, time)),
        spread(samples.ratio(name, time, yardstick, time)),
        number(2, 1_000)(_cost(samples, name)),
    ]


def packages_table(samples: Samples) -> str:
    header = "files|docparser ms|of plain files|libzip ms|libdeflate ms".split("|")
    corpora = [c for c in YARDSTICK_CORPUS if samples.names(f"first_load/lookup/{c}/{LIBRARY}")]
    plain = f"first_load/lookup/plain/{LIBRARY}"

    def row(corpus: str) -> list[str]:
        name = f"first_load/lookup/{corpus}/{LIBRARY}"
        inflated = (f"first_load/inflate/{corpus}/{reader}" for reader in ("libzip", "libdeflate"))
        return [
            f"`{corpus}`",
            milliseconds(samples.median(name, time)),
            spread(samples.ratio(name, time, plain, time)),
            *(milliseconds(samples.median(name, time)) for name in inflated),
        ]

    return table(header, map(row, corpora))


def overlay_table(samples: Samples, group: str) -> str:
    header = ["language", "docparser ms", "the files one by one ms", "ratio"]
    load, languages = f"{group}/overlay", samples.parts(f"{group}/overlay/")
    return table(
        header,
        (_beside(samples, load, each, "sum", time, milliseconds) for each in languages),
    )


def memory_table(samples: Samples) -> str:
    header = ["load", "reader", "MB held", "bytes/record", "of yardstick"]
    header.append("peak beyond it, in largest files")
    names = [
        name
        for kind in ("lookup", "reference")
        for name in samples.names(f"first_load/{kind}/")
        if _shows_memory(name)
    ]
    return table(header, (_memory_row(samples, name) for name in names), text_columns=2)


def _shows_memory(name: str) -> bool:
    _, kind, corpus, reader = name.split("/")
    return reader == LIBRARY or (f"{kind}/{corpus}" in MAIN_LOADS and reader != "parse")


def _memory_row(samples: Samples, name: str) -> list[str]:
    _, kind, corpus, reader = name.split("/")
    held, heap = counter("heap_bytes"), f"heap/{kind}/{corpus}/{reader}"
    records, heap_bytes = _records(samples, name), samples.median(heap, held)
    return [
        f"{kind} `{corpus}`",
        label(reader),
        megabytes(heap_bytes),
        count(heap_bytes / records if heap_bytes and records else None),
        number(3)(_value(samples.ratio(heap, held, f"heap/{kind}/{corpus}/{YARDSTICK}", held))),
        number(2)(samples.median(name, excess_peak)),
    ]


def _value(ratio: Ratio | None) -> float | None:
    return ratio and ratio.value


def scaling_table(samples: Samples) -> str:
    header = ["load", *(label(reader) for reader in (LIBRARY, YARDSTICK, *NAIVE_READERS))]
    loads = [load for load in SCALED if samples.names(f"first_load/{load}/")]

    def row(load: str) -> list[str]:
        readers = (LIBRARY, YARDSTICK, *NAIVE_READERS)
        return [f"`{load}`", *(times(cost_growth(samples, load, reader)) for reader in readers)]

    return table(header, map(row, loads))


def cost_growth(samples: Samples, load: str, reader: str = LIBRARY) -> Ratio | None:
    """Cost per record of the larger load, relative to the load that it was made of."""
    name, base = (f"first_load/{each}/{reader}" for each in (load, SCALED[load]))
    return samples.ratio(name, per_record(time), base, per_record(time))


def text_table(samples: Samples) -> str:
    header = ["text", "docparser GB/s", "ICU GB/s", "ratio"]
    speed = counter("bytes_per_second")
    kinds = samples.parts("text/")
    return table(header, (_beside(samples, "text", kind, "icu", speed, gigabytes) for kind in kinds))


def _beside(
    samples: Samples, group: str, what: str, reader: str, value: Value, shown: Format
) -> list[str]:
    """The library beside another reader of the same."""
    name, other = (f"{group}/{what}/{each}" for each in (LIBRARY, reader))
    return [
        f"`{what}`",
        shown(samples.median(name, value)),
        shown(samples.median(other, value)),
        spread(samples.ratio(name, value, other, value)),
    ]


def installed_table(samples: Samples) -> str:
    header = ["products", "docparser ns", "scan ns", "ratio"]
    counts = samples.parts("installed/")
    return table(header, (_beside(samples, "installed", n, "scan", time, count) for n in counts))


def threads_table(samples: Samples) -> str:
    header = ["what", "reader", "threads", "µs for each", "throughput, of one thread"]
    rows = [
        _threads_row(samples, name, threads)
        for name in samples.names("")
        for threads in samples.thread_counts(name)
        if threads > 1
    ]
    return table(header, rows, text_columns=2)


def _threads_row(samples: Samples, name: str, threads: int) -> list[str]:
    load, _, reader = name.rpartition("/")
    one, many = (samples.median(name, time, number_of) for number_of in (1, threads))
    gain = one / many if one and many else None
    return [f"`{load}`", label(reader), str(threads), microseconds(many), number(2)(gain)]


def client_table(samples: Samples) -> str:
    header = ["name", "`refdoc lookup` ms", "`apropos -e` ms", "ratio", "`whatis` ms"]

    def row(name: str) -> list[str]:
        refdoc, apropos, whatis = (
            f"client/{name}/{reader}" for reader in ("refdoc", "apropos", "whatis")
        )
        return [
            f"`{name}`",
            milliseconds(samples.median(refdoc, time)),
            milliseconds(samples.median(apropos, time)),
            spread(samples.ratio(refdoc, time, apropos, time)),
            milliseconds(samples.median(whatis, time)),
        ]

    return table(header, map(row, samples.parts("client/")))


def searched_names(samples: Samples) -> str:
    """How many names each program searches."""
    names = {name.rpartition("/")[2]: name for name in samples.names("client/")}
    counts = {reader: samples.median(name, counter("records")) for reader, name in names.items()}
    return ", ".join(f"{reader} {count(known)}" for reader, known in counts.items())
