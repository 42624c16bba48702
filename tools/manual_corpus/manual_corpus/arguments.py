"""Input groups and outputs of an item, from tagged lists and the sections on results."""

import re

from .document import (
    Block,
    Code,
    Entry,
    Heading,
    Indented,
    Listing,
    Paragraph,
    Section,
    Tagged,
    first_text,
    nested_blocks,
)
from .text import anchor, collapse, slug, to_ascii

_LONGEST_TERM = 100
# An operand with a value: "bs=BYTES"; options with one: "--width=COLUMNS", "--color[=WHEN]".
_OPERAND = re.compile(r"(?P<name>[a-z][\w-]*)=(?P<value>[^\s,=\"]+)")
_NAME_VALUE = re.compile(r"(?P<name>--[\w-]+)(?:\[=(?P<optional>[^\]]+)\]|=(?P<value>[^\s,]+))")
_REMARK = re.compile(r"(?P<name>[!-~]+) ?(?P<remark>\((?!\d\w*\))[^()]+(?:\([^()]*\)[^()]*)*\))")
_ASCII_BEGINNING = re.compile(r"[\w%/.-][ -~]*", re.ASCII)
_OPTIONS = re.compile(r"--?[\w?@][\w-]*(?:, --?[\w?@][\w-]*)*", re.ASCII)


def input_groups(sections: list[Section]) -> list[dict]:
    """A group for each titled part of the description and options that holds tagged lists."""
    groups: list[dict] = []
    for section in sections:
        if section.kind in ("description", "options"):
            groups.extend(_section_groups(section))
    _make_identifiers_unique(groups)
    return groups


def _section_groups(section: Section) -> list[dict]:
    groups: list[dict] = []
    title = section.title
    for block in nested_blocks(section.blocks):
        if isinstance(block, Heading):
            title = block.text
        elif isinstance(block, Tagged):
            inputs = [argument for entry in block.entries for argument in _arguments(entry)]
            if inputs and groups and groups[-1]["title"] == title:
                groups[-1]["inputs"].extend(inputs)
            elif inputs:
                groups.append({"title": title, "inputs": inputs})
    return groups


def _arguments(entry: Entry) -> list[dict]:
    term = ", ".join(entry.terms)
    if len(term) > _LONGEST_TERM:
        return []
    name, remark = _name_and_remark(_unquoted(term.removesuffix(":")))
    name, values = _name_and_values(name)
    argument = {
        "htmlid": entry.ident,
        "name": to_ascii(name),
        "purpose": collapse(f"{remark} {first_text(entry.blocks)}"),
        "value": values or _listed_values(entry.blocks),
        "pair": bool(values),
    }
    return [argument]


def _name_and_values(term: str) -> tuple[str, list[str]]:
    """Takes the values out of options in the name=value form."""
    operand = _OPERAND.fullmatch(term)
    if operand:
        return operand["name"], [operand["value"]]
    values = [match["optional"] or match["value"] for match in _NAME_VALUE.finditer(term)]
    return _NAME_VALUE.sub(r"\g<name>", term), list(dict.fromkeys(values))


def _name_and_remark(term: str) -> tuple[str, str]:
    """Takes a remark such as "(since Linux 2.6)" off the name before it."""
    match = _REMARK.fullmatch(term)
    return (match["name"], match["remark"]) if match else (term, "")


def _unquoted(term: str) -> str:
    """Without quotes around a whole term, which only mark it as code."""
    return term[1:-1] if re.fullmatch(r'"[^"]+"', term) else term


def _listed_values(blocks: list[Block]) -> list[str]:
    """The terms of a list below an argument are the values it may take."""
    lists = [block for block in nested_blocks(blocks) if isinstance(block, Tagged)]
    terms = (term for block in lists for entry in block.entries for term in entry.terms)
    return [term for term in terms if len(term) <= _LONGEST_TERM]


def ascii_part(name: str) -> str:
    """The options in a term whose other words are translated, or what it begins with; may be ""."""
    beginning = _OPTIONS.match(name) or _ASCII_BEGINNING.match(name)
    return beginning[0].rstrip(" ([{<=,.:;'\"") if beginning else ""


def _make_identifiers_unique(groups: list[dict]) -> None:
    seen: set[str] = set()
    for argument in (argument for group in groups for argument in group["inputs"]):
        base = slug(argument["htmlid"]) or slug(argument["name"]) or "argument"
        ident, number = base, 2
        while ident in seen:
            ident, number = f"{base}-{number}", number + 1
        seen.add(ident)
        argument["htmlid"] = ident


def outputs(sections: list[Section]) -> list[dict]:
    """One output for each section on a result: the return value, the exit status."""
    return [_output(section) for section in sections if section.kind in ("returns", "exit")]


def _output(section: Section) -> dict:
    fallback = "RETURN_VALUE" if section.kind == "returns" else "EXIT_STATUS"
    output = {
        "htmlid": anchor(section.title, section.ident) or fallback,
        "name": "-".join(map(str.capitalize, section.title.split("-"))),
        "purpose": collapse(" ".join(_sentences(section.blocks))),
    }
    values = _listed_values(section.blocks)
    return output | {"value": values} if values else output


def _sentences(blocks: list[Block]) -> list[str]:
    pieces: list[str] = []
    for block in blocks:
        match block:
            case Paragraph(lines=lines) | Code(lines=lines):
                pieces.extend(lines)
            case Tagged(entries=entries) | Listing(entries=entries):
                for entry in entries:
                    text = " ".join(_sentences(entry.blocks))
                    pieces.append(f"{', '.join(entry.terms)}: {text}" if entry.terms else text)
            case Indented(blocks=inner):
                pieces.extend(_sentences(inner))
    return pieces
