"""The ratios that sum a page up, as the README has them."""

import re

from .formats import MISSING, table

SUBJECTS = {
    "lookup files": "lookup files: first load",
    "reference files": "reference files: first load",
}
BASES = ("the yardstick", "Boost.JSON", "RapidJSON")


def summary(page: str) -> str:
    measured = _measured(page)
    rows = [
        [what, *(measured.get((subject, base), MISSING) for base in BASES)]
        for what, subject in SUBJECTS.items()
    ]
    client = measured.get(("`refdoc lookup`", "`apropos -e`"), MISSING)
    return (
        table(["first load, relative to", *BASES], rows)
        + f"\n\n`refdoc lookup NAME`, which reads all lookup files, takes {client} of the time of "
        "`apropos -e NAME`,\nwhich has an index.\n"
    )


def _measured(page: str) -> dict[tuple[str, str], str]:
    """The values in the page's table of aims; "…" stands for the subject of the row before."""
    found, subject = {}, ""
    for aim, value in re.findall(r"^\| (.*?) \| [≤≥–].*? \| ([\d.]+) \|", page, re.MULTILINE):
        before, _, base = aim.rpartition("of ")
        subject = subject if before == "… " else before.rstrip(", ")
        found[subject, base] = f"{float(value):.2f}"
    return found
