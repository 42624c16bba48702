"""What one manual page gives on its own, before pages are put together into products."""

import re
from dataclasses import dataclass, field

from . import arguments, facts, synopsis
from .deprecation import deprecation
from .description import render
from .document import Heading, Section
from .languages import LANGUAGES, is_written_in
from .mandoc import BrokenPage, read_page
from .pages import PageFile
from .products import syntax_type
from .text import anchor

_REFERENCE = re.compile(r"([\w.+:@\[-]+)\s?\((\d\w*)\)")
_BARE_NAME = re.compile(r"[A-Za-z_][\w]*(?:::\w+)+|\bperl\w+|\b[A-Z]\w{3,}")
# Sections that describe nothing by themselves, when a page has no DESCRIPTION.
_NO_DESCRIPTION = ("name", "library", "synopsis", "see_also", "returns", "exit", "versions")


@dataclass
class ParsedPage:
    page: PageFile
    language: str
    names: list[str]
    purpose: str
    description: str
    library: tuple[str, str] | None = None
    introduced: str = ""
    deprecation: str = ""
    deprecated_names: list[str] = field(default_factory=list)
    syntax_title: str = ""
    syntax: list[str] = field(default_factory=list)
    input_groups: list[dict] = field(default_factory=list)
    outputs: list[dict] = field(default_factory=list)
    references: list[tuple[str, str]] = field(default_factory=list)
    examples: list[tuple[str, str]] = field(default_factory=list)  # identifier and title
    in_own_language: bool = True


def parse_page(page: PageFile, language_code: str) -> ParsedPage:
    """Raises BrokenPage when the page cannot be used."""
    language = LANGUAGES[language_code]
    sections = read_page(page.path, language)
    names, purpose = _names_and_purpose(sections)
    description = render(_description_blocks(sections))
    parsed = ParsedPage(page, language_code, names, purpose, description)
    parsed.in_own_language = is_written_in(f"{purpose}\n{description}", language)
    parsed.library = facts.library(_blocks(sections, "library"))
    parsed.introduced = facts.first_version(page.name, sections)
    status, concerned = deprecation(names, purpose, sections)
    _read_syntax(parsed, sections)
    _mark_deprecated(parsed, status, concerned)
    parsed.input_groups = arguments.input_groups(sections)
    parsed.outputs = arguments.outputs(sections)
    parsed.references = _references(sections)
    parsed.examples = _examples(sections)
    return parsed


def _names_and_purpose(sections: list[Section]) -> tuple[list[str], str]:
    if not sections:
        raise BrokenPage("empty page")
    blocks = _blocks(sections, "name")
    if not blocks:
        raise BrokenPage("no NAME section")
    names, purpose = facts.names_and_purpose(blocks)
    if not names or not purpose:
        raise BrokenPage("NAME section without name and purpose")
    return names, purpose


def _blocks(sections: list[Section], *kinds: str) -> list:
    return [block for section in sections if section.kind in kinds for block in section.blocks]


def _description_blocks(sections: list[Section]) -> list:
    blocks = _blocks(sections, "description")
    if blocks:
        return blocks
    others = [section for section in sections if section.kind not in _NO_DESCRIPTION]
    return [block for section in others for block in [Heading(section.title, ""), *section.blocks]]


def _read_syntax(parsed: ParsedPage, sections: list[Section]) -> None:
    section = next((section for section in sections if section.kind == "synopsis"), None)
    if section is not None:
        declarations = syntax_type(parsed.page.section) == "function"
        parsed.syntax_title = section.title
        parsed.syntax = synopsis.syntax_lines(section.blocks, declarations=declarations)


def _mark_deprecated(parsed: ParsedPage, status: str, concerned: list[str]) -> None:
    """The page has the status of its own name; the synopsis may mark further names."""
    marked = [name for name in parsed.names if name in synopsis.deprecated_names(parsed.syntax)]
    own_name = parsed.page.name if parsed.page.name in parsed.names else parsed.names[0]
    if own_name in concerned and (status != "discouraged" or own_name not in marked):
        parsed.deprecation = status
    elif own_name in marked:
        parsed.deprecation = "deprecated"
    parsed.deprecated_names = marked + (concerned if status != "discouraged" else [])


def _references(sections: list[Section]) -> list[tuple[str, str]]:
    """Names with the sections that the page gives; bare names come with an empty section."""
    text = render(_blocks(sections, "see_also"))
    bare = [(name, "") for name in _BARE_NAME.findall(text)]
    return list(dict.fromkeys([*_REFERENCE.findall(text), *bare]))


def _examples(sections: list[Section]) -> list[tuple[str, str]]:
    """The subsections with examples, or the section as a whole where it has none."""
    found: list[tuple[str, str]] = []
    for section in (section for section in sections if section.kind == "examples"):
        headings = [block for block in section.blocks if isinstance(block, Heading)]
        base = anchor(section.title, section.ident) or "EXAMPLES"
        parts = [
            (anchor(part.text, part.ident) or f"{base}-{number}", part.text)
            for number, part in enumerate(headings, start=1)
        ]
        found.extend(parts or [(base, section.title)])
    return found
