"""The manual pages in packages: real pages, and the aliases that lead to them."""

import gzip
import os
import re
from collections.abc import Iterable
from dataclasses import dataclass
from pathlib import Path

from .packages import Package

PageKey = tuple[str, str]  # name and section, as in the file name

_FILE_NAME = re.compile(r"(?P<name>[!-~]+)\.(?P<section>[0-9n]\w*?)(?:\.gz)?", re.ASCII)
_SOURCE_REQUEST = re.compile(rb"\.so\s+(\S+)")
# A page that only includes another one is tiny; nothing longer is opened to look for the request.
_LONGEST_STUB = 1024


@dataclass(frozen=True)
class PageFile:
    name: str
    section: str
    path: Path
    package: str

    @property
    def key(self) -> PageKey:
        return (self.name, self.section)


class PageSet:
    """The pages of one language: each real page once, every other name as an alias."""

    def __init__(self) -> None:
        self.pages: dict[PageKey, PageFile] = {}
        self._aliases: dict[PageKey, PageKey] = {}
        self.problems: list[str] = []

    def add_package(self, package: Package, man_folder: str) -> None:
        root = package.manual_root / man_folder
        for path in package.pages:
            if re.fullmatch(r"man\w+", path.parent.name) and path.parent.parent == root:
                self._add(path, package.name)

    def resolve(self, key: PageKey) -> PageFile | None:
        seen = set()
        while key in self._aliases and key not in seen:
            seen.add(key)
            key = self._aliases[key]
        return self.pages.get(key)

    def names(self) -> Iterable[PageKey]:
        return [*self.pages, *self._aliases]

    def report_broken_aliases(self) -> None:
        for (name, section), target in sorted(self._aliases.items()):
            if self.resolve((name, section)) is None:
                self.problems.append(
                    f"{name}.{section}: alias of a missing page {'.'.join(target)}"
                )

    def _add(self, path: Path, package: str) -> None:
        key = _page_key(path.name)
        if key is None:
            self.problems.append(f"{path.name}: not the name of a manual page")
            return
        if key in self.pages or key in self._aliases:
            return
        target = _alias_target(path)
        if target is None:
            self.pages[key] = PageFile(*key, path, package)
        elif target != key:
            self._aliases[key] = target


def _page_key(file_name: str) -> PageKey | None:
    match = _FILE_NAME.fullmatch(file_name)
    return (match["name"], match["section"]) if match else None


def _alias_target(path: Path) -> PageKey | None:
    if path.is_symlink():
        return _page_key(os.path.basename(os.readlink(path))) or ("?", "?")
    if path.stat().st_size > _LONGEST_STUB:
        return None
    included = _SOURCE_REQUEST.search(_first_request(path))
    if included is None:
        return None
    return _page_key(os.path.basename(os.fsdecode(included[1]))) or ("?", "?")


def _first_request(path: Path) -> bytes:
    """The first line that is neither empty nor a comment."""
    try:
        with gzip.open(path) if path.suffix == ".gz" else path.open("rb") as source:
            lines = source.read(16 * _LONGEST_STUB).splitlines()
    except (OSError, EOFError):
        return b""  # mandoc reports what is wrong with it
    return next(
        (line for line in lines if line.strip() and not line.startswith((b'.\\"', b"'\\\""))), b""
    )
