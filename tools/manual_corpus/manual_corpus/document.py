"""A manual page as a document: sections made of blocks."""

import re
from dataclasses import dataclass

_OPTION_LINE = re.compile(r"-{1,2}[\w?@#:].{0,100}")
_BULLET = re.compile(r"[\u2022\u00b7*o+\u2013\u2014\u30fb-]")
_NUMBER = re.compile(r"\[?\(?(?:\d{1,2}|[a-z])[.)\]]+")


@dataclass
class Paragraph:
    lines: list[str]


@dataclass
class Code:
    lines: list[str]


@dataclass
class Heading:
    text: str
    ident: str


@dataclass
class Entry:
    """An entry of a list; only those of tagged lists have terms and an identifier."""

    terms: list[str]
    ident: str
    blocks: list


@dataclass
class Tagged:
    entries: list[Entry]


@dataclass
class Listing:
    """Items marked with bullets or numbers; the number is the item's term."""

    entries: list[Entry]


@dataclass
class Table:
    rows: list[list[str]]


@dataclass
class Indented:
    blocks: list


@dataclass
class Section:
    title: str
    ident: str
    kind: str
    blocks: list


Block = Paragraph | Code | Heading | Tagged | Listing | Table | Indented


def tidy(blocks: list[Block]) -> list[Block]:
    """Puts together what mandoc splits: one list per run of entries, each with all its blocks."""
    tidied: list[Block] = []
    for block in blocks:
        previous = tidied[-1] if tidied else None
        if isinstance(block, Tagged):
            _append_tagged(tidied, block)
        elif isinstance(block, Indented) and isinstance(previous, Tagged):
            previous.entries[-1].blocks.extend(block.blocks)
        elif isinstance(block, Indented) and _is_option(previous):
            tidied.pop()
            _append_tagged(tidied, Tagged([Entry(previous.lines, "", block.blocks)]))
        else:
            tidied.append(block)
    return [piece for block in tidied for piece in _without_bullets(block)]


def _is_option(block: Block | None) -> bool:
    """An option that stands on its own line above its indented text."""
    return isinstance(block, Paragraph) and _OPTION_LINE.fullmatch(block.lines[0]) is not None


def _append_tagged(blocks: list[Block], addition: Tagged) -> None:
    if not blocks or not isinstance(blocks[-1], Tagged):
        blocks.append(Tagged([]))
    entries = blocks[-1].entries
    for entry in addition.entries:
        if not entry.terms and entries:
            entries[-1].blocks.extend(entry.blocks)
        elif entries and not entries[-1].blocks and entries[-1].terms:
            # A term without a text of its own shares that of the next one.
            entries[-1].terms.extend(entry.terms)
            entries[-1].blocks.extend(entry.blocks)
        else:
            entries.append(entry)


def _without_bullets(block: Block) -> list[Block]:
    """Splits a tagged list into real tagged lists and listings whose tags are only marks."""
    if not isinstance(block, Tagged):
        return [block]
    pieces: list[Block] = []
    for entry in block.entries:
        mark = entry.terms[0] if len(entry.terms) == 1 else ""
        bullet = not entry.terms or _BULLET.fullmatch(mark) is not None
        kind = Listing if bullet or _NUMBER.fullmatch(mark) else Tagged
        if not pieces or not isinstance(pieces[-1], kind):
            pieces.append(kind([]))
        pieces[-1].entries.append(Entry([], "", entry.blocks) if bullet else entry)
    return pieces


def first_text(blocks: list[Block]) -> str:
    """The first paragraph, or the first line of what there is instead."""
    for block in blocks:
        text = _own_text(block)
        if text:
            return text
    return ""


def _own_text(block: Block) -> str:
    match block:
        case Paragraph(lines=lines):
            return " ".join(lines)
        case Code(lines=lines):
            return next((line.strip() for line in lines if line.strip()), "")
        case Table(rows=rows):
            return " ".join(rows[0]) if rows else ""
        case Tagged(entries=entries) | Listing(entries=entries):
            return first_text(entries[0].blocks) if entries else ""
        case Indented(blocks=blocks):
            return first_text(blocks)
    return ""


def nested_blocks(blocks: list[Block]) -> list[Block]:
    """The blocks with those inside indented blocks in their places."""
    flat = []
    for block in blocks:
        flat.extend(nested_blocks(block.blocks) if isinstance(block, Indented) else [block])
    return flat
