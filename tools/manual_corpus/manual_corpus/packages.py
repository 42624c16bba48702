"""Finds the manual pages of Debian packages, and downloads packages where needed."""

import getpass
import os
import subprocess
import tempfile
from dataclasses import dataclass
from pathlib import Path

from .errors import CorpusError

MANUAL_FOLDER = "usr/share/man"
_VERSION_LINE = "${db:Status-Status} ${Package} ${Version}\\n"


@dataclass(frozen=True)
class Package:
    name: str
    version: str
    manual_root: Path
    pages: tuple[Path, ...]  # sorted; plain files and links below manual_root


def obtain_packages(names: list[str], folder: Path) -> dict[str, Package]:
    """Finds the packages on this system or below `folder`; downloads those that are in neither."""
    found = {}
    versions = _installed_versions(names)
    for name in names:
        package = None
        if name in versions:
            package = _installed_package(name, versions[name])
        package = package or _unpacked_package(name, folder)
        if package is not None:
            found[name] = package
    missing = [name for name in names if name not in found]
    if missing:
        _download(missing, folder)
        found.update((name, _required_package(name, folder)) for name in missing)
    return found


def _installed_versions(names: list[str]) -> dict[str, str]:
    listed = _run(["dpkg-query", "-W", "-f", _VERSION_LINE, *names], None).stdout
    lines = (line.split(" ") for line in listed.splitlines())
    return {name: version for status, name, version in lines if status == "installed"}


def _installed_package(name: str, version: str) -> Package | None:
    """The installed package, or None when one of its manual pages is not on disk."""
    root = f"/{MANUAL_FOLDER}/"
    listed = _run(["dpkg-query", "-L", name], None).stdout.splitlines()
    pages = [path for path in listed if path.startswith(root) and os.path.splitext(path)[1]]
    pages = [path for path in pages if not os.path.isdir(path)]
    if not pages or not all(map(os.path.lexists, pages)):
        return None
    return Package(name, version, Path(root), tuple(map(Path, sorted(pages))))


def _unpacked_package(name: str, folder: Path) -> Package | None:
    """Unpacked folders are named package_version_architecture, as the package files are."""
    unpacked = sorted(path for path in folder.glob(f"{name}_*") if path.is_dir())
    if not unpacked:
        return None
    root = unpacked[-1] / MANUAL_FOLDER
    pages = (os.path.join(place, file) for place, _, files in os.walk(root) for file in files)
    version = unpacked[-1].name.split("_")[1]
    return Package(name, version, root, tuple(map(Path, sorted(pages))))


def _required_package(name: str, folder: Path) -> Package:
    package = _unpacked_package(name, folder)
    if package is None or not package.pages:
        raise CorpusError(f"package {name} was downloaded but holds no manual pages")
    return package


def _download(names: list[str], folder: Path) -> None:
    folder.mkdir(parents=True, exist_ok=True)
    wanted = [name for name in names if not _package_files(name, folder)]
    if wanted:
        with tempfile.TemporaryDirectory(prefix=".download-", dir=folder) as scratch:
            _fetch(wanted, Path(scratch))
            # Moved only once all are complete, so that no run ever meets half a file.
            for package_file in Path(scratch).glob("*.deb"):
                package_file.rename(folder / package_file.name)
    for name in names:
        _unpack(_package_files(name, folder)[-1])


def _fetch(names: list[str], folder: Path) -> None:
    # As the current user, not apt's sandbox user, who may not write to the folder.
    user = getpass.getuser()
    command = ["apt-get", "-qq", "-o", f"APT::Sandbox::User={user}", "download", *names]
    result = _run(command, folder)
    if result.returncode != 0 or not all(_package_files(name, folder) for name in names):
        raise CorpusError(
            f"cannot download {' '.join(names)}: {_last_line(result.stderr)}\n"
            "If package lists are missing or out of date, 'apt-get update' fetches them."
        )


def _package_files(name: str, folder: Path) -> list[Path]:
    return sorted(folder.glob(f"{name}_*.deb"))


def _unpack(package_file: Path) -> None:
    """Unpacks beside the file; the folder gets its name only once it is complete."""
    target = package_file.with_suffix("")
    partial = target.with_name(f".partial-{target.name}")
    result = _run(["dpkg-deb", "-x", str(package_file), str(partial)], package_file.parent)
    if result.returncode != 0:
        raise CorpusError(f"cannot unpack {package_file.name}: {_last_line(result.stderr)}")
    partial.rename(target)


def _run(command: list[str], folder: Path | None) -> subprocess.CompletedProcess:
    try:
        return subprocess.run(
            command, cwd=folder, capture_output=True, text=True, errors="replace", check=False
        )
    except FileNotFoundError as error:
        raise CorpusError(f"{command[0]} is not installed, and it is needed") from error


def _last_line(text: str) -> str:
    lines = text.strip().splitlines()
    return lines[-1] if lines else "no message"
