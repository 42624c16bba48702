"""Syntax lines from the SYNOPSIS section."""

import re

from .document import Block, Code, Paragraph, Table, Tagged, nested_blocks
from .text import collapse, to_ascii

# From here on a synopsis says which macros make the declarations visible, not how to call them.
_END_MARK = "feature_test_macros(7)"
# Running text beside literal declarations: a sentence, not a declaration or a preprocessor line.
_REMARK = re.compile(r"^[^#]*[.:\u3002]$")


def syntax_lines(blocks: list[Block], *, declarations: bool) -> list[str]:
    """The lines, in ASCII where typographic characters allow; each C declaration is one line."""
    lines: list[str] = []
    blocks = nested_blocks(blocks)
    literal = declarations and any(isinstance(block, Code) for block in blocks)
    for block in blocks:
        block_lines = _block_lines(block)
        if any(_END_MARK in line and not line.startswith("#") for line in block_lines):
            break
        if literal and isinstance(block, Paragraph):
            block_lines = [line for line in block_lines if not _REMARK.search(line)]
        lines.extend(block_lines)
    lines = _without_common_indent([to_ascii(line).rstrip() for line in lines])
    if declarations:
        lines = _joined_declarations(lines)
    return [line for line in lines if line]


def _block_lines(block: Block) -> list[str]:
    match block:
        case Paragraph(lines=lines) | Code(lines=lines):
            return lines
        case Table(rows=rows):
            return [" ".join(cell for cell in row if cell) for row in rows]
        case Tagged(entries=entries):
            return [
                line for entry in entries for line in [*entry.terms, *_nested_lines(entry.blocks)]
            ]
    return []


def _nested_lines(blocks: list[Block]) -> list[str]:
    return ["    " + line for block in nested_blocks(blocks) for line in _block_lines(block)]


def _joined_declarations(lines: list[str]) -> list[str]:
    joined: list[str] = []
    for line in lines:
        if joined and _continues(joined[-1], line):
            joined[-1] = collapse(f"{joined[-1]} {line}").replace("( ", "(")
        else:
            joined.append(line)
    return joined


def _continues(previous: str, line: str) -> bool:
    """Whether a declaration goes on: in parentheses, or after a result type on its own line."""
    if not line or not previous or previous.lstrip().startswith(("#", "/*", "//")):
        return False
    if previous.count("(") > previous.count(")") or previous.endswith("]]"):
        return True
    return (
        re.fullmatch(r"[\w\s*]+", previous) is not None
        and re.match(r"\s*[\w*]+\(", line) is not None
    )


def _without_common_indent(lines: list[str]) -> list[str]:
    indents = [len(line) - len(line.lstrip()) for line in lines if line]
    common = min(indents, default=0)
    return [line[common:] for line in lines]


def deprecated_names(lines: list[str]) -> list[str]:
    """The functions whose declarations carry the deprecated attribute."""
    marked = (line for line in lines if "[[deprecated]]" in line)
    return [
        match[1]
        for match in (re.search(r"(\w+)\(", line.split("]]", 1)[1]) for line in marked)
        if match
    ]
