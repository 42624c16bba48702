"""Blocks as plain text.

One empty line separates paragraphs, and each is one line. A line that starts with four spaces is
code, a paragraph that starts with "- " is a list item, and one that starts with "## " a heading.
"""

import textwrap

from .document import Block, Code, Entry, Heading, Indented, Listing, Paragraph, Table, Tagged
from .text import display_width

_WIDEST_TABLE = 100
_CODE_INDENT = "    "


def render(blocks: list[Block]) -> str:
    return "\n\n".join(_paragraphs(blocks))


def _paragraphs(blocks: list[Block]) -> list[str]:
    return [text for block in blocks for text in _block_paragraphs(block) if text]


def _block_paragraphs(block: Block) -> list[str]:
    match block:
        case Paragraph(lines=lines):
            return [_guarded(line) for line in lines]
        case Code(lines=lines):
            return [_code(lines)]
        case Heading(text=text):
            return [f"## {text}"]
        case Tagged(entries=entries):
            return [text for entry in entries for text in _entry(entry, ": ")]
        case Listing(entries=entries):
            return [text for entry in entries for text in _entry(entry, " ")]
        case Table(rows=rows):
            return _table(rows)
        case Indented(blocks=blocks):
            return _paragraphs(blocks)
    raise TypeError(f"unknown block {block!r}")


def _guarded(line: str) -> str:
    """Running text, marked where it happens to begin like a heading or an item."""
    return _CODE_INDENT + line if line.startswith(("## ", "- ")) else line


def _code(lines: list[str]) -> str:
    dedented = textwrap.dedent("\n".join(lines)).split("\n")
    return "\n".join(_CODE_INDENT + line if line else "" for line in dedented)


def _entry(entry: Entry, separator: str) -> list[str]:
    term = ", ".join(entry.terms)
    paragraphs = _paragraphs(entry.blocks)
    if not paragraphs or not _is_running_text(paragraphs[0]):
        return [f"- {term}", *paragraphs] if term else paragraphs
    if not term:
        return [f"- {paragraphs[0]}", *paragraphs[1:]]
    return [f"- {term.removesuffix(':')}{separator}{paragraphs[0]}", *paragraphs[1:]]


def _is_running_text(paragraph: str) -> bool:
    return not paragraph.startswith((_CODE_INDENT, "- ", "## "))


def _table(rows: list[list[str]]) -> list[str]:
    """Columns where they fit, otherwise one list item for each row."""
    count = max(map(len, rows))
    padded = [row + [""] * (count - len(row)) for row in rows]
    widths = [max(display_width(row[column]) for row in padded) for column in range(count)]
    if sum(widths) + 2 * (count - 1) > _WIDEST_TABLE:
        return ["- " + " | ".join(cell for cell in row if cell) for row in rows]
    lines = ("  ".join(map(_pad, row, widths)).rstrip() for row in padded)
    return ["\n".join(_CODE_INDENT + line for line in lines)]


def _pad(cell: str, width: int) -> str:
    return cell + " " * (width - display_width(cell))
