"""What was measured: the repetitions of each benchmark, their medians and ratios."""

import json
import statistics
import sys
from collections import defaultdict
from collections.abc import Callable, Iterable
from dataclasses import dataclass
from pathlib import Path

Run = dict
Value = Callable[[Run], float | None]
Key = tuple[str, int]  # name and number of threads

# How many leading parts of a name are ours; Google Benchmark adds others.
NAME_PARTS = {
    "first_load": 4,
    "heap": 4,
    "reload": 4,
    "text": 3,
    "installed": 3,
    "client": 3,
}
MISSING_DATE = "–"
NANOSECONDS = {"ns": 1, "us": 1_000, "ms": 1_000_000, "s": 1_000_000_000}


@dataclass(frozen=True)
class Ratio:
    """The median and the quartiles of the ratios of single rounds."""

    value: float
    low: float
    high: float


class Samples:
    def __init__(self, runs: Iterable[Run], date: str) -> None:
        self.date = date
        self._runs: dict[Key, list[Run]] = defaultdict(list)
        for run in runs:
            name = _short_name(run["run_name"])
            if run.get("error_occurred"):
                print(f"{name} failed: {run.get('error_message')}", file=sys.stderr)
            elif run["run_type"] == "iteration" and name:
                self._runs[name, run.get("threads", 1)].append(run)
        for repetitions in self._runs.values():
            repetitions.sort(key=lambda run: run["round"])

    @classmethod
    def load(cls, paths: Iterable[Path]) -> "Samples":
        """Each report of the library is one round."""
        reports = [_read_report(path) for path in paths]
        for number, report in enumerate(reports):
            for run in report["benchmarks"]:
                run.setdefault("round", number)
        dates = (report.get("context", {}).get("date", "")[:10] for report in reports)
        return cls(
            (run for report in reports for run in sorted(report["benchmarks"], key=_place)),
            next(filter(None, dates), MISSING_DATE),
        )

    def names(self, prefix: str) -> list[str]:
        """Names of benchmarks below the prefix, once each, as they were run."""
        return list(dict.fromkeys(name for name, _ in self._runs if name.startswith(prefix)))

    def parts(self, prefix: str) -> list[str]:
        """What follows the prefix in names, up to the next slash."""
        tails = (name.removeprefix(prefix) for name in self.names(prefix))
        return list(dict.fromkeys(tail.partition("/")[0] for tail in tails))

    def thread_counts(self, name: str) -> list[int]:
        return sorted(threads for other, threads in self._runs if other == name)

    def repetitions(self, prefix: str) -> int:
        counts = (len(runs) for (name, _), runs in self._runs.items() if name.startswith(prefix))
        return max(counts, default=0)

    def median(self, name: str, value: Value, threads: int = 1) -> float | None:
        values = self._values(name, value, threads)
        return statistics.median(values) if values else None

    def ratio(self, name: str, value: Value, base: str, base_value: Value) -> Ratio | None:
        values, base_values = self._by_round(name, value), self._by_round(base, base_value)
        pairs = [values[each] / base_values[each] for each in values if base_values.get(each)]
        if not pairs:
            return None
        low, high = pairs[0], pairs[0]
        if len(pairs) > 1:
            low, _, high = statistics.quantiles(pairs, n=4, method="inclusive")
        return Ratio(statistics.median(pairs), low, high)

    def _by_round(self, name: str, value: Value) -> dict[int, float]:
        values = ((run["round"], value(run)) for run in self._runs.get((name, 1), ()))
        return {number: value for number, value in values if value is not None}

    def _values(self, name: str, value: Value, threads: int = 1) -> list[float]:
        values = (value(run) for run in self._runs.get((name, threads), ()))
        return [value for value in values if value is not None]


def time(run: Run) -> float:
    """Nanoseconds; with several threads, those for each load of any of them."""
    return run["real_time"] * NANOSECONDS[run["time_unit"]]


def counter(name: str) -> Value:
    return lambda run: run.get(name)


def per_record(value: Value) -> Value:
    def share(run: Run) -> float | None:
        amount, records = value(run), run.get("records")
        return amount / records if amount is not None and records else None

    return share


def excess_peak(run: Run) -> float | None:
    """What a load needs beside its result, in sizes of the largest file."""
    if not run.get("largest_file") or "peak_resident" not in run:
        return None
    return max(run["peak_resident"] - run["held_bytes"], 0) / run["largest_file"]


def _read_report(path: Path) -> dict:
    text = path.read_text(encoding="utf-8")
    # Google Benchmark leaves the file empty when a filter matches nothing.
    return json.loads(text) if text else {"benchmarks": []}


def _place(run: Run) -> tuple[int, int]:
    """The place where the benchmark is defined; reports are in the order in which they ended."""
    return run.get("family_index", 0), run.get("per_family_instance_index", 0)


def _short_name(run_name: str) -> str:
    parts = run_name.split("/")
    return "/".join(parts[: NAME_PARTS.get(parts[0], 0)])
