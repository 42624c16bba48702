"""Numbers and tables as the page shows them."""

from collections.abc import Callable, Iterable

from .samples import Ratio

MISSING = "–"
Format = Callable[[float | None], str]


def number(digits: int, divisor: float = 1) -> Format:
    """A format with so many digits after the point, for values in units of the divisor."""
    return lambda value: MISSING if value is None else f"{value / divisor:,.{digits}f}"


milliseconds = number(2, 1_000_000)
microseconds = number(1, 1_000)
megabytes = number(2, 1_000_000)
gigabytes = number(2, 1_000_000_000)
count = number(0)


def times(ratio: Ratio | None) -> str:
    return MISSING if ratio is None else f"{ratio.value:.2f}"


def quartiles(ratio: Ratio | None) -> str:
    return MISSING if ratio is None else f"{ratio.low:.2f} … {ratio.high:.2f}"


def spread(ratio: Ratio | None) -> str:
    return MISSING if ratio is None else f"{times(ratio)} ({quartiles(ratio)})"


def table(header: Iterable[str], rows: Iterable[Iterable[str]], text_columns: int = 1) -> str:
    """A table, its first columns aligned to the left and the others to the right."""
    header, rows = list(header), [list(row) for row in rows]
    if not rows:
        return "Not measured."
    rule = ["---"] * text_columns + ["---:"] * (len(header) - text_columns)
    return "\n".join(f"| {' | '.join(cells)} |" for cells in [header, rule, *rows])
