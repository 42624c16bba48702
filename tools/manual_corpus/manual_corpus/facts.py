"""Facts that a page states in a few words: names and purpose, library, first version."""

import re

from .document import Block, Code, Paragraph, Section, nested_blocks
from .text import collapse

_DASH = re.compile(r"\s+(?:[-\u2010-\u2015\u2212\u30fc]+|\\-)\s+")
_TIGHT_DASH = re.compile(r"\s*[\u2013\u2014\u2015]\s*|\s+--?\s*|\s*--?\s+")
_LIBRARY = re.compile(r"(?P<title>[^()]*?)\s*[(\uff08](?P<name>lib[\w.+-]+)(?:,[^)]*)?[)\uff09]")

_VERSION = re.compile(
    r"\b(?:added|appeared|introduced|available|provided|supported|since|new)\b[^.;:]{0,50}?"
    r"\b(?P<system>Linux|glibc|OpenSSL|[Pp]erl|util-linux)(?:\s+(?:version|kernel|release))?"
    r"\s+v?(?P<number>[0-9]+(?:\.[0-9]+)+[a-z]?)"
)
_FUNCTION = re.compile(r"([\w.]+)\(\)")


def names_and_purpose(blocks: list[Block]) -> tuple[list[str], str]:
    """The names that the NAME section documents, and the purpose; nothing without a dash."""
    text = ""
    for line in (line for block in nested_blocks(blocks) for line in _lines(block)):
        text = f"{text} {line}".strip()
        parts = _split_at_dash(text)
        if len(parts) == 2 and parts[1]:
            names = (_clean_name(name) for name in re.split(r"[,\u3001\uff0c]", parts[0]))
            return list(dict.fromkeys(name for name in names if name)), parts[1].strip()
    return [], ""


def _split_at_dash(text: str) -> list[str]:
    parts = _DASH.split(text, maxsplit=1)
    return parts if len(parts) == 2 else _TIGHT_DASH.split(text, maxsplit=1)


def _clean_name(name: str) -> str:
    return collapse(name).removesuffix("()").strip("\"'")


def _lines(block: Block) -> list[str]:
    return [line.strip() for line in block.lines] if isinstance(block, Paragraph | Code) else []


def library(blocks: list[Block]) -> tuple[str, str] | None:
    """Name and title of the library that a LIBRARY section states first."""
    text = " ".join(line for block in nested_blocks(blocks) for line in _lines(block))
    match = _LIBRARY.search(text)
    return (match["name"], match["title"].strip()) if match else None


def first_version(name: str, sections: list[Section]) -> str:
    """The version in which the page says that `name` appeared, such as "glibc 2.1"."""
    for section in sections:
        if section.kind == "versions" and section.title.casefold() != "notes":
            match = _first_version_match(name, _running_text(section.blocks))
            if match:
                return f"{match['system']} {match['number']}"
    return ""


def _first_version_match(name: str, text: str) -> re.Match | None:
    """A sentence that names functions is about those only, and so are following ones without names."""
    subjects = [name]
    for sentence in re.split(r"\.\s", text):
        match = _VERSION.search(sentence)
        subjects = _FUNCTION.findall(sentence[: match.start()] if match else sentence) or subjects
        if match and name in subjects:
            return match
    return None


def _running_text(blocks: list[Block]) -> str:
    return " ".join(line for block in nested_blocks(blocks) for line in _lines(block))
