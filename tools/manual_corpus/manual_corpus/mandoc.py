"""Reads a manual page through mandoc's HTML output."""

import re
import subprocess
import xml.etree.ElementTree as ElementTree
from collections.abc import Callable
from pathlib import Path

from .document import (
    Block,
    Code,
    Entry,
    Heading,
    Indented,
    Listing,
    Paragraph,
    Section,
    Table,
    Tagged,
    tidy,
)
from .languages import Language, section_kind
from .text import LINE_BREAK, code_line, collapse

_NOT_IN_XML = re.compile(
    rb"[\x00-\x08\x0b\x0c\x0e-\x1f]|&#x0*(?:[0-8bcef]|1[0-9a-f]|d[89a-f][0-9a-f]{2}|fff[ef]);",
    re.IGNORECASE,
)
# Statuses up to 4 report faults in a page that is shown anyway.
_WORST_USABLE_STATUS = 4
_TIME_LIMIT_SECONDS = 60


class BrokenPage(Exception):
    """The page cannot be used; the text says why."""


def read_page(path: Path, language: Language) -> list[Section]:
    command = ["mandoc", "-T", "html", "-O", "fragment", str(path)]
    try:
        result = subprocess.run(
            command, capture_output=True, check=False, timeout=_TIME_LIMIT_SECONDS
        )
    except subprocess.TimeoutExpired as error:
        raise BrokenPage("mandoc does not come to an end") from error
    if result.returncode > _WORST_USABLE_STATUS or result.returncode < 0:
        message = result.stderr.decode("utf-8", "replace").strip().splitlines()
        raise BrokenPage(f"mandoc fails: {message[-1] if message else result.returncode}")
    return parse_sections(result.stdout, language)


def parse_sections(html: bytes, language: Language) -> list[Section]:
    # mandoc closes every element and uses XML's own entities only, so the fast XML parser is enough.
    try:
        root = ElementTree.fromstring(b"<page>" + _NOT_IN_XML.sub(b"", html) + b"</page>")
    except ElementTree.ParseError as error:
        raise BrokenPage(f"mandoc's output cannot be parsed: {error}") from error
    return [
        _section(element, language)
        for element in root.iter("section")
        if element.get("class") == "Sh"
    ]


def _section(element: ElementTree.Element, language: Language) -> Section:
    heading = element.find("h1")
    title = "" if heading is None else collapse(_raw_text(heading))
    ident = "" if heading is None else heading.get("id", "")
    return Section(title, ident, section_kind(title, language), _BlockReader().read(element))


def _raw_text(element: ElementTree.Element) -> str:
    if element.tag == "br":
        return LINE_BREAK
    pieces = [element.text or ""]
    for child in element:
        pieces.append(_raw_text(child))
        pieces.append(child.tail or "")
    return "".join(pieces)


class _BlockReader:
    """Collects the blocks of one element; running text between block elements is a paragraph."""

    def __init__(self) -> None:
        self._blocks: list[Block] = []
        self._inline: list[str] = []

    def read(self, element: ElementTree.Element) -> list[Block]:
        self._read_content(element)
        return tidy(self._blocks)

    def _read_content(self, element: ElementTree.Element) -> None:
        self._flush()
        self._inline.append(element.text or "")
        for child in element:
            self._read_child(child)
            self._inline.append(child.tail or "")
        self._flush()

    def _read_child(self, child: ElementTree.Element) -> None:
        if child.tag in _CONTAINERS and child.get("class") != "Bd-indent":
            self._read_content(child)
        elif child.tag in _READERS:
            self._flush()
            self._blocks.extend(_READERS[child.tag](child))
        else:
            self._inline.append(_raw_text(child))

    def _flush(self) -> None:
        lines = [collapse(line) for line in "".join(self._inline).split(LINE_BREAK)]
        self._inline.clear()
        if any(lines):
            self._blocks.append(Paragraph([line for line in lines if line]))


def _read_indented(element: ElementTree.Element) -> list[Block]:
    blocks = _BlockReader().read(element)
    return [Indented(blocks)] if blocks else []


def _read_heading(element: ElementTree.Element) -> list[Block]:
    return [Heading(collapse(_raw_text(element)), element.get("id", ""))]


def _read_code(element: ElementTree.Element) -> list[Block]:
    # In literal text mandoc writes a break as a line of its own, and also keeps line ends.
    text = re.sub("\n?\x00\n?", "\n", _raw_text(element))
    lines = [code_line(line) for line in text.split("\n")]
    while lines and not lines[-1]:
        lines.pop()
    while lines and not lines[0]:
        lines.pop(0)
    return [Code(lines)] if lines else []


def _read_tagged(element: ElementTree.Element) -> list[Block]:
    entries: list[Entry] = []
    for child in element:
        if child.tag == "dt":
            term = collapse(_raw_text(child))
            entries.append(Entry([term] if term else [], _identifier(child), []))
        elif entries:
            entries[-1].blocks.extend(_BlockReader().read(child))
    return [Tagged(entries)] if entries else []


def _identifier(element: ElementTree.Element) -> str:
    return next((part.get("id") for part in element.iter() if part.get("id")), "")


def _read_listing(element: ElementTree.Element) -> list[Block]:
    entries = []
    for number, child in enumerate(element.findall("li"), start=1):
        terms = [f"{number}."] if element.tag == "ol" else []
        entries.append(Entry(terms, "", _BlockReader().read(child)))
    return [Listing(entries)] if entries else []


def _read_table(element: ElementTree.Element) -> list[Block]:
    rows = [
        [collapse(_raw_text(cell)) for cell in row if cell.tag in ("td", "th")]
        for row in element.iter("tr")
    ]
    rows = [row for row in rows if any(row)]
    return [Table(rows)] if rows else []


_CONTAINERS = frozenset({"p", "div", "section", "blockquote"})
_READERS: dict[str, Callable[[ElementTree.Element], list[Block]]] = {
    "div": _read_indented,
    "dl": _read_tagged,
    "h1": lambda element: [],
    "h2": _read_heading,
    "ol": _read_listing,
    "pre": _read_code,
    "table": _read_table,
    "ul": _read_listing,
}
