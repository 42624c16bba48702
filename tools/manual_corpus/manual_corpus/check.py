"""Checks a finished data root: members, their kinds, ASCII where it must be, links."""

import json
import zipfile
from collections.abc import Iterator
from dataclasses import dataclass
from pathlib import Path

from .output import FULL_FOLDER, LOOKUP_FOLDER, PRODUCT_LIST


@dataclass(frozen=True)
class Member:
    kind: str  # "text", "ascii", "any", or "list", whose elements follow `element`
    required: bool = False
    choices: frozenset[str] = frozenset()
    element: object = None  # a table of members, or the kind of a plain element


def _choice(texts: str) -> Member:
    return Member("ascii", choices=frozenset(texts.split()))


_TEXT, _ASCII = Member("text"), Member("ascii")
_NEEDED_TEXT, _NEEDED_ASCII = Member("text", True), Member("ascii", True)
_VALUES = Member("list", element="text")
_ENTITY_TYPE = _choice(
    "unknown function method class property event enumeration namespace object operator keyword "
    "command app tool format macro type"
)
_FUNCTION_TYPE = _choice("unspecified function method constructor static script macro systemcall")
_SYNTAX_TYPE = _choice("plain function command creation namevalue")
_STATUS = _choice("none discouraged deprecated removed")

_ARGUMENT = {
    "htmlid": _ASCII,
    "purpose": _NEEDED_TEXT,
    "value": _VALUES,
    "syntaxtype": _SYNTAX_TYPE,
}
_INPUT = {"name": _NEEDED_ASCII, "defaultvalue": _TEXT} | _ARGUMENT
_GROUP = {"title": _NEEDED_TEXT, "inputs": Member("list", element=_INPUT)}
_PAIRS = {"namevaluepairs": Member("list", True, element=_GROUP)}
_SYNTAX_GROUP = {
    "syntaxtype": _SYNTAX_TYPE,
    "title": _NEEDED_TEXT,
    "syntax": Member("list", True, element="ascii"),
}
_FULL_ITEM = {
    "href": _NEEDED_ASCII,
    "refpurpose": _NEEDED_TEXT,
    "refentity": Member(
        "list", element={"type": _ENTITY_TYPE, "fcntype": _FUNCTION_TYPE, "name": _NEEDED_TEXT}
    ),
    "packagename": _ASCII,
    "introduced": _ASCII,
    "description": _TEXT,
    "deprecationstatus": _STATUS,
    "syntaxgroup": Member("list", element=_SYNTAX_GROUP),
    "inputgroup": Member("list", element=_GROUP),
    "outputs": Member("list", element={"name": _NEEDED_TEXT} | _ARGUMENT),
    "seealso": Member("list", element={"url": _NEEDED_ASCII, "name": _NEEDED_TEXT}),
    "examples": Member(
        "list", element={"url": _NEEDED_ASCII, "open_command": _ASCII, "title": _NEEDED_TEXT}
    ),
}
_LOOKUP_ITEM = {
    "name": _NEEDED_TEXT,
    "refpurpose": _NEEDED_TEXT,
    "href": _NEEDED_ASCII,
    "type": _ENTITY_TYPE,
    "fcntype": _FUNCTION_TYPE,
    "deprecated": Member("any"),
}
_HEADER = {
    "productName": _NEEDED_TEXT,
    "baseCode": _NEEDED_ASCII,
    "helpFolder": _NEEDED_ASCII,
    "helpLocation": _NEEDED_ASCII,
}
_PRODUCT = {"shortName": _NEEDED_TEXT} | {
    name: _TEXT
    for name in ("displayName", "helpLocation", "baseCode", "altShortName", "availability")
}


def check_root(root: Path) -> list[str]:
    """What is wrong with the data root, one line for each fault; nothing for a sound one."""
    try:
        full = dict(_documents(root / FULL_FOLDER))
        lookup = dict(_documents(root / LOOKUP_FOLDER))
        products = json.loads((root / PRODUCT_LIST).read_text(encoding="utf-8"))
    except (OSError, ValueError, zipfile.BadZipFile) as error:
        return [f"{root}: {error}"]
    faults = [f"{PRODUCT_LIST}: {fault}" for fault in _list_faults(products, _PRODUCT, "")]
    for name, document in full.items():
        faults += [f"{name}: {fault}" for fault in _document_faults(document, _FULL_ITEM)]
    for name, document in lookup.items():
        faults += [f"lookup {name}: {fault}" for fault in _document_faults(document, _LOOKUP_ITEM)]
    return faults or [*_link_faults(full), *_lookup_faults(full, lookup)]


def _documents(folder: Path) -> Iterator[tuple[str, object]]:
    for path in sorted(folder.iterdir()):
        if path.suffix == ".json":
            yield path.name, json.loads(path.read_text(encoding="utf-8"))
        elif path.suffix == ".zip":
            with zipfile.ZipFile(path) as archive:
                for name in archive.namelist():
                    yield name, json.loads(archive.read(name).decode("utf-8"))


def _document_faults(document: object, item: dict) -> Iterator[str]:
    table = _HEADER | {"refItems": Member("list", True, element=item)}
    packages = Member("list", element=table)
    yield from _object_faults(document, table | {"supportPackages": packages}, "")


def _object_faults(value: object, table: dict[str, Member], place: str) -> Iterator[str]:
    if not isinstance(value, dict):
        yield f"{place}: no object"
        return
    if table is _GROUP and "namevaluepairs" in value:
        table = _PAIRS
    place = f"{place} {value['href']}" if isinstance(value.get("href"), str) else place
    for name, member in table.items():
        if name in value:
            yield from _value_faults(value[name], member, f"{place}.{name}")
        elif member.required:
            yield f"{place}.{name}: missing"
    yield from (f"{place}.{name}: unknown member" for name in value.keys() - table.keys())


def _value_faults(value: object, member: Member, place: str) -> Iterator[str]:
    if member.kind == "list":
        yield from _list_faults(value, member.element, place)
    elif member.kind != "any":
        yield from _text_faults(value, member, place)


def _list_faults(value: object, element: object, place: str) -> Iterator[str]:
    if not isinstance(value, list):
        yield f"{place}: no array"
        return
    for index, entry in enumerate(value):
        if isinstance(element, dict):
            yield from _object_faults(entry, element, f"{place}[{index}]")
        else:
            yield from _text_faults(entry, Member(element), f"{place}[{index}]")


def _text_faults(value: object, member: Member, place: str) -> Iterator[str]:
    if not isinstance(value, str):
        yield f"{place}: no string"
    elif member.kind == "ascii" and not value.isascii():
        yield f"{place}: not ASCII: {value!r}"
    elif member.choices and value not in member.choices:
        yield f"{place}: unknown text {value!r}"


def _items(document: dict) -> Iterator[dict]:
    for part in (document, *document.get("supportPackages", ())):
        yield from part["refItems"]


def _link_faults(full: dict[str, dict]) -> Iterator[str]:
    hrefs = {item["href"] for document in full.values() for item in _items(document)}
    for name, document in full.items():
        for item in _items(document):
            for link in item.get("seealso", ()):
                if link["url"] not in hrefs:
                    yield f"{name}: {item['href']}: link to {link['url']}, which is no item"


def _lookup_faults(full: dict[str, dict], lookup: dict[str, dict]) -> Iterator[str]:
    """Each lookup file must tell of exactly the items that the full file of its name holds."""
    for name in sorted(full.keys() ^ lookup.keys()):
        yield f"{name}: not in both catalog folders"
    for name in sorted(full.keys() & lookup.keys()):
        full_hrefs, lookup_hrefs = (
            {item["href"] for item in _items(catalog[name])} for catalog in (full, lookup)
        )
        for href in sorted(full_hrefs ^ lookup_hrefs):
            yield f"{name}: {href}: not in both the full and the lookup file"
