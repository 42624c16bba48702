"""The command line."""

import argparse
from pathlib import Path

from .chart import write_chart
from .machine import Machine
from .page import performance_page
from .samples import Samples
from .summary import summary

NOTES = Path(__file__).resolve().parents[2] / "docs/performance_notes.md"


def main() -> int:
    arguments = parse_arguments()
    samples = Samples.load(arguments.results)
    notes = NOTES.read_text(encoding="utf-8") if NOTES.exists() else ""
    page = performance_page(samples, Machine(arguments.build), notes)
    arguments.output.mkdir(parents=True, exist_ok=True)
    (arguments.output / "performance.md").write_text(page, encoding="utf-8")
    write_chart(samples, arguments.output / "performance.svg")
    print(summary(page))
    return 0


def parse_arguments() -> argparse.Namespace:
    parser = argparse.ArgumentParser(
        prog="report",
        description="Writes performance.md and performance.svg out of JSON reports of Google "
        "Benchmark, and prints the ratios that sum the page up.",
    )
    parser.add_argument("results", type=Path, nargs="+", metavar="RESULTS.json")
    parser.add_argument(
        "--output", type=Path, required=True, metavar="DIR", help="the folder that gets both"
    )
    parser.add_argument(
        "--build", type=Path, required=True, metavar="DIR", help="the CMake build folder"
    )
    return parser.parse_args()
