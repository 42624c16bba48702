"""Checks a finished documentation root: its documents against the schemas, and its links."""

import json
import zipfile
import zlib
from collections.abc import Iterator
from pathlib import Path

from jsonschema import Draft7Validator, ValidationError
from jsonschema.validators import extend

from .output import FULL_FOLDER, LOOKUP_FOLDER, PRODUCT_LIST

_SCHEMAS = Path(__file__).resolve().parents[3] / "schemas"
_PRODUCT_MEMBERS = "shortName displayName helpLocation baseCode altShortName availability".split()
_PRODUCT_SCHEMA = {
    "type": "array",
    "items": {
        "type": "object",
        "required": ["shortName"],
        "properties": {name: {"type": "string"} for name in _PRODUCT_MEMBERS},
        "additionalProperties": False,
    },
}
_MESSAGE_LENGTH = 200


def _ascii_faults(
    _validator: object, _when: str, value: object, _schema: dict
) -> Iterator[ValidationError]:
    """The keyword `sevenBit`. No item here is an app, whose names need not be ASCII."""
    if isinstance(value, str) and not value.isascii():
        yield ValidationError(f"{value!r} is not ASCII")


_Validator = extend(Draft7Validator, {"sevenBit": _ascii_faults})


def check_root(root: Path) -> list[str]:
    """What is wrong with the documentation root, one line for each fault."""
    faults: list[str] = []
    full = dict(_documents(root / FULL_FOLDER, faults))
    lookup = dict(_documents(root / LOOKUP_FOLDER, faults))
    products = dict(_documents_of(root / PRODUCT_LIST, faults))
    faults += [
        *_schema_faults(products, _PRODUCT_SCHEMA),
        *_schema_faults(full, _strict_schema("reference")),
        *(f"lookup {fault}" for fault in _schema_faults(lookup, _strict_schema("lookup"))),
    ]
    return faults or [*_link_faults(full), *_lookup_faults(full, lookup)]


def _documents(folder: Path, faults: list[str]) -> Iterator[tuple[str, object]]:
    """The documents of a catalog folder by name; files that cannot be read become faults."""
    if not folder.is_dir():
        faults.append(f"{folder}: not a folder")
        return
    for path in sorted(folder.iterdir()):
        yield from _documents_of(path, faults)


def _documents_of(path: Path, faults: list[str]) -> Iterator[tuple[str, object]]:
    if path.suffix not in (".json", ".zip"):
        return
    if not path.is_file():
        faults.append(f"{path}: not a regular file")
        return
    try:
        if path.suffix == ".json":
            yield path.name, json.loads(path.read_text(encoding="utf-8"))
            return
        with zipfile.ZipFile(path) as archive:
            for name in archive.namelist():
                yield name, json.loads(archive.read(name).decode("utf-8"))
    except (OSError, ValueError, RecursionError, zipfile.BadZipFile, zlib.error) as error:
        faults.append(f"{path}: {error}")


def _strict_schema(name: str) -> dict:
    """The schema, except that an unknown member is a mistake."""
    schema = json.loads((_SCHEMAS / f"{name}.schema.json").read_text(encoding="utf-8"))
    definitions = {key: _closed(value, schema) for key, value in schema["definitions"].items()}
    return _closed(schema, schema) | {"definitions": definitions}


def _closed(schema: dict, root: dict) -> dict:
    """The schema of an object with the members of its `allOf` and no others."""
    closed = {key: value for key, value in schema.items() if key != "allOf"}
    if "then" in schema:
        return closed | {"then": _closed(schema["then"], root)}
    for part in schema.get("allOf", ()):
        base = root["definitions"][part["$ref"].rpartition("/")[2]]
        closed = base | closed | {"properties": base["properties"] | closed["properties"]}
    if "properties" not in closed:
        return closed
    read = {name: value for name, value in closed["properties"].items() if "unread" not in value}
    return closed | {"properties": read, "additionalProperties": False}


def _schema_faults(documents: dict[str, object], schema: dict) -> Iterator[str]:
    validator = _Validator(schema)
    for name, document in documents.items():
        for error in validator.iter_errors(document):
            yield f"{name}: {error.json_path}: {error.message[:_MESSAGE_LENGTH]}"


def _items(document: dict) -> Iterator[dict]:
    for part in (document, *document.get("supportPackages", ())):
        yield from part["refItems"]


def _link_faults(full: dict[str, dict]) -> Iterator[str]:
    hrefs = {item["href"] for document in full.values() for item in _items(document)}
    for name, document in full.items():
        for item in _items(document):
            for link in item.get("seealso", ()):
                if link["url"] not in hrefs:
                    yield f"{name}: {item['href']}: link to {link['url']}, which is not an item"


def _lookup_faults(full: dict[str, dict], lookup: dict[str, dict]) -> Iterator[str]:
    """Each lookup file must have exactly the items of the full file of its name."""
    for name in sorted(full.keys() ^ lookup.keys()):
        yield f"{name}: not in both catalog folders"
    for name in sorted(full.keys() & lookup.keys()):
        full_hrefs, lookup_hrefs = (
            {item["href"] for item in _items(catalog[name])} for catalog in (full, lookup)
        )
        for href in sorted(full_hrefs ^ lookup_hrefs):
            yield f"{name}: {href}: not in both the full and the lookup file"
