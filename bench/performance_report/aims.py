"""The aims, and where they stand."""

import statistics
from collections.abc import Callable
from dataclasses import dataclass

from .formats import MISSING, number, quartiles, table
from .readers import LIBRARY, PROGRAM, YARDSTICK
from .samples import Ratio, Samples, Value, counter, excess_peak, time
from .tables import cost_growth

Measure = Callable[[Samples], Ratio | None]


@dataclass(frozen=True)
class Aim:
    what: str
    bound: float | None  # None: shown for comparison
    measure: Measure
    at_least: bool = False

    def row(self, samples: Samples) -> list[str]:
        measured = self.measure(samples)
        sign = "≥" if self.at_least else "≤"
        return [
            self.what,
            MISSING if self.bound is None else f"{sign} {self.bound:.2f}",
            number(3)(measured and measured.value),
            quartiles(measured),
            self._verdict(measured),
        ]

    def _verdict(self, measured: Ratio | None) -> str:
        if self.bound is None:
            return MISSING
        if measured is None:
            return "not measured"
        met = (
            measured.value >= self.bound if self.at_least else measured.value <= self.bound
        )
        is_close = measured.low <= self.bound <= measured.high
        return ("met" if met else "**not met**") + (", within the spread" if is_close else "")


def aims_table(samples: Samples) -> str:
    header = ["aim", "bound", "measured", "quartiles", "met"]
    aims = [*LOAD_AIMS, *_overlay_aims(samples), *OTHER_AIMS]
    return table(header, (aim.row(samples) for aim in aims))


def _time_ratio(name: str, base: str) -> Measure:
    return lambda samples: samples.ratio(name, time, base, time)


def _first_load(load: str, base_reader: str) -> Measure:
    return _time_ratio(f"first_load/{load}/{LIBRARY}", f"first_load/{load}/{base_reader}")


def _of_program(group: str) -> Measure:
    load = f"{group}/lookup/small_files"
    return _time_ratio(f"{load}/{LIBRARY}", f"{load}/{PROGRAM}")


def _of_plain(corpus: str) -> Measure:
    return _time_ratio(
        f"first_load/lookup/{corpus}/{LIBRARY}", f"first_load/lookup/plain/{LIBRARY}"
    )


def _growth(load: str) -> Measure:
    return lambda samples: cost_growth(samples, load)


def _held(load: str) -> Measure:
    name, yardstick = (f"heap/{load}/{reader}" for reader in (LIBRARY, YARDSTICK))
    held = counter("heap_bytes")
    return lambda samples: samples.ratio(name, held, yardstick, held)


def _amount(name: str, value: Value, unit: float = 1) -> Measure:
    """A plain value, shown as a ratio to its unit."""
    return lambda samples: samples.ratio(name, value, name, lambda run: unit)


def _peak(load: str) -> Measure:
    return _amount(f"first_load/{load}/{LIBRARY}", excess_peak)


def _text_speed(kind: str) -> Measure:
    speed = counter("bytes_per_second")
    return lambda samples: samples.ratio(f"text/{kind}/{LIBRARY}", speed, f"text/{kind}/icu", speed)


def _client(samples: Samples) -> Ratio | None:
    """The median of the ratios of all names."""
    ratios = [
        samples.ratio(f"client/{name}/refdoc", time, f"client/{name}/apropos", time)
        for name in samples.parts("client/")
    ]
    found = [ratio for ratio in ratios if ratio is not None]
    if not found:
        return None
    values = ([r.value for r in found], [r.low for r in found], [r.high for r in found])
    return Ratio(*map(statistics.median, values))


def _overlay_aims(samples: Samples) -> list[Aim]:
    return [
        Aim(
            f"localized reference files, `{language}`: first load, of the files one by one",
            1.10,
            _first_load(f"overlay/{language}", "sum"),
        )
        for language in samples.parts("first_load/overlay/")
    ]


LOAD_AIMS = [
    Aim("lookup files: first load, of the yardstick", 1.10, _first_load("lookup/plain", YARDSTICK)),
    Aim("… of Boost.JSON", 1.00, _first_load("lookup/plain", "boost_json")),
    Aim("… of Boost.JSON with an arena", None, _first_load("lookup/plain", "boost_json_arena")),
    Aim("… of RapidJSON", None, _first_load("lookup/plain", "rapidjson")),
    Aim("many small lookup files: first load, of a program", 1.05, _of_program("first_load")),
    Aim("… later loads, of the same", 1.05, _of_program("reload")),
    Aim(
        "reference files: first load, of the yardstick",
        1.10,
        _first_load("reference/all", YARDSTICK),
    ),
    Aim("… of Boost.JSON", 0.85, _first_load("reference/all", "boost_json")),
    Aim("… of Boost.JSON with an arena", None, _first_load("reference/all", "boost_json_arena")),
    Aim("… of RapidJSON", None, _first_load("reference/all", "rapidjson")),
]
OTHER_AIMS = [
    Aim("a package for each lookup file: first load, of plain files", 1.35, _of_plain("packages")),
    Aim("one package with all, of plain files", 1.25, _of_plain("one_package")),
    Aim("cost per record with 16 times the products", 1.15, _growth("lookup/products16")),
    Aim("cost per record in files 16 times as large", 1.15, _growth("lookup/size16")),
    Aim("lookup files: heap bytes of the records, of the yardstick", 1.02, _held("lookup/plain")),
    Aim("reference files: the same", 1.02, _held("reference/all")),
    Aim("lookup files: peak beyond the result, in largest files", 3.0, _peak("lookup/plain")),
    Aim("… of files 16 times as large", 3.0, _peak("lookup/size16")),
    Aim("reference files: the same", 3.0, _peak("reference/all")),
    Aim(
        "ASCII text to UTF-16, GB/s",
        8.0,
        _amount(f"text/ascii/{LIBRARY}", counter("bytes_per_second"), 1e9),
        at_least=True,
    ),
    Aim("Japanese text to UTF-16: speed, of ICU", 0.80, _text_speed("japanese"), at_least=True),
    Aim("`refdoc lookup`, of `apropos -e`", 0.50, _client),
]
