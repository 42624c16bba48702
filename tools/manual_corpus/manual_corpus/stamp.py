"""The stamp of a documentation root: says whether a run would write the same root again."""

import hashlib
import json
import os
import stat
from collections.abc import Iterable
from pathlib import Path

from .packages import Package

STAMP_NAME = ".corpus-stamp.json"


def fingerprint(packages: Iterable[Package], options: dict) -> str:
    """A digest of everything that the root depends on: packages, pages, options, this program, mandoc."""
    digest = hashlib.sha256(json.dumps(options, sort_keys=True).encode())
    for source in sorted(Path(__file__).parent.glob("*.py")):
        digest.update(source.read_bytes())
    for package in sorted(packages, key=lambda package: package.name):
        digest.update(f"{package.name} {package.version}\n".encode())
        for page in package.pages:
            state = _page_state(page, len(str(package.manual_root)))
            digest.update(state.encode("utf-8", "surrogateescape"))
    return digest.hexdigest()


def _page_state(page: Path, root_length: int) -> str:
    state = os.lstat(page)
    target = os.readlink(page) if stat.S_ISLNK(state.st_mode) else ""
    return f"{str(page)[root_length:]} {state.st_size} {state.st_mtime_ns} {target}\n"


def write_stamp(root: Path, digest: str, summary: list[str]) -> None:
    content = {"fingerprint": digest, "summary": summary}
    (root / STAMP_NAME).write_text(
        json.dumps(content, ensure_ascii=False, indent=1) + "\n", "utf-8"
    )


def stamped_summary(root: Path, digest: str) -> list[str] | None:
    """The summary of the run that wrote the root, if that run had the same fingerprint."""
    try:
        content = json.loads((root / STAMP_NAME).read_text("utf-8"))
        return content["summary"] if content["fingerprint"] == digest else None
    except (OSError, ValueError, KeyError, TypeError):
        return None
