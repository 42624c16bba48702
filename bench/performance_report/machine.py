"""The machine and the versions that the figures are from."""

import os
import platform
import re
import subprocess
from pathlib import Path

from .formats import MISSING, table

PACKAGES = {
    "Boost.JSON": "libboost-json1.81-dev",
    "ICU": "libicu-dev",
    "libzip": "libzip-dev",
    "zlib": "zlib1g-dev",
    "libdeflate": "libdeflate-dev",
    "RapidJSON": "rapidjson-dev",
    "simdjson": "libsimdjson-dev",
    "nlohmann/json": "nlohmann-json3-dev",
    "Google Benchmark": "libbenchmark-dev",
    "man-db": "man-db",
}


class Machine:
    def __init__(self, build: Path) -> None:
        self._build = build

    def table(self) -> str:
        rows = {
            "processor": _first(r"model name\s*: (.*)", "/proc/cpuinfo"),
            "processors": str(os.cpu_count()),
            "memory": _memory(),
            "system": f"{platform.freedesktop_os_release()['PRETTY_NAME']}, "
            f"{platform.system()} {'.'.join(platform.release().split('.')[:2])}",
            "compiler": self._compiler(),
            "versions": ", ".join(f"{name} {_version(of)}" for name, of in PACKAGES.items()),
        }
        return table(["", ""], rows.items(), text_columns=2)

    def _compiler(self) -> str:
        cache = self._build / "CMakeCache.txt"
        program = _first(r"CMAKE_CXX_COMPILER:\w+=(.*)", cache)
        flags = _first(r"CMAKE_CXX_FLAGS_RELEASE:\w+=(.*)", cache)
        return f"{(_output([program, '--version']).splitlines() or [MISSING])[0]}, `{flags}`"


def _first(pattern: str, path: str | Path) -> str:
    try:
        match = re.search(pattern, Path(path).read_text(encoding="utf-8"))
    except OSError:
        match = None
    return match[1].strip() if match else MISSING


def _memory() -> str:
    kibibytes = _first(r"MemTotal:\s*(\d+)", "/proc/meminfo")
    return f"{int(kibibytes) / 2**20:.1f} GiB" if kibibytes.isdecimal() else MISSING


def _version(package: str) -> str:
    version = _output(["dpkg-query", "-W", "-f", "${Version}", package])
    upstream = re.sub(r"^\d+:|[+.]dfsg.*|-[^-]*$", "", version.strip())
    return upstream or MISSING


def _output(command: list[str]) -> str:
    try:
        return subprocess.run(command, capture_output=True, text=True, check=False).stdout
    except OSError:
        return ""
