"""Writes a documentation root. The same documents always give the same bytes."""

import json
import zipfile
from pathlib import Path

from .assembly import Document, ResourceFile
from .products import SUPPORT_PACKAGE_NOT_INSTALLED, LookupPackaging, Product

FULL_FOLDER = "docCatalog/referenceapi"
LOOKUP_FOLDER = "docCatalog/referenceapi_lookup"
SUPPORT_FOLDER = "supportPackages"
PRODUCT_LIST = "installedProducts.json"

_ZIP_TIME = (1980, 1, 1, 0, 0, 0)
_UNIX = 3
_FILE_MODE = 0o100644


def write_root(root: Path, products: list[Product], files: list[ResourceFile]) -> None:
    for folder in (FULL_FOLDER, LOOKUP_FOLDER, SUPPORT_FOLDER):
        (root / folder).mkdir(parents=True)
    for resource in files:
        _write_text(
            root / FULL_FOLDER / f"{stem(resource)}.json", resource_text(resource, "full_items")
        )
    for product in products:
        _write_lookup(
            root / LOOKUP_FOLDER, product, [file for file in files if file.product is product]
        )
    _write_text(root / PRODUCT_LIST, _product_list(products))
    for name in _installed_support_packages(files):
        (root / SUPPORT_FOLDER / name).mkdir()


def stem(resource: ResourceFile) -> str:
    suffix = "" if resource.language == "en" else f"_{resource.language}"
    return resource.product.short_name + suffix


def resource_text(resource: ResourceFile, items: str) -> str:
    """The file as JSON with one item on each line."""
    text = _document_text(resource.main, items)
    if resource.support_packages:
        packages = ",\n".join(
            _document_text(document, items) + "}" for document in resource.support_packages.values()
        )
        text += f',\n"supportPackages": [\n{packages}\n]'
    return text + "\n}\n"


def _document_text(document: Document, items: str) -> str:
    """The document without its closing brace."""
    header = ",\n".join(f"{_json(key)}: {_json(value)}" for key, value in document.header.items())
    lines = ",\n".join(_json(item) for item in getattr(document, items))
    return f'{{\n{header},\n"refItems": [\n{lines}\n]'


def _json(value: object) -> str:
    return json.dumps(value, ensure_ascii=False)


def _write_text(path: Path, text: str) -> None:
    path.write_text(text, encoding="utf-8", newline="\n")


def _write_lookup(folder: Path, product: Product, files: list[ResourceFile]) -> None:
    leaves = {f"{stem(file)}.json": resource_text(file, "lookup_items") for file in files}
    if not leaves:
        return
    match product.packaging:
        case LookupPackaging.PLAIN:
            for name, text in leaves.items():
                _write_text(folder / name, text)
        case LookupPackaging.ONE_ZIP:
            _write_zip(folder / f"{product.short_name}.zip", leaves)
        case LookupPackaging.ZIP_PER_LANGUAGE:
            for name, text in leaves.items():
                _write_zip((folder / name).with_suffix(".zip"), {name: text})


def _write_zip(path: Path, leaves: dict[str, str]) -> None:
    with zipfile.ZipFile(path, "w") as archive:
        for name, text in sorted(leaves.items()):
            entry = zipfile.ZipInfo(name, _ZIP_TIME)
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.create_system = _UNIX
            entry.external_attr = _FILE_MODE << 16
            archive.writestr(entry, text.encode("utf-8"))


def _product_list(products: list[Product]) -> str:
    records = [
        {
            "shortName": product.short_name,
            "displayName": product.display_name("en"),
            "helpLocation": product.help_location,
            "baseCode": product.base_code,
            "altShortName": product.alt_short_name,
            "availability": "available",
        }
        for product in products
        if product.installed
    ]
    return json.dumps(records, ensure_ascii=False, indent=2) + "\n"


def _installed_support_packages(files: list[ResourceFile]) -> list[str]:
    names = {name for file in files for name in file.support_packages}
    return sorted(names - {SUPPORT_PACKAGE_NOT_INSTALLED})
