"""A temporary folder with small packages of manual pages, and runs of the program over them."""

import contextlib
import gzip
import io
import json
import sys
import tempfile
import unittest
import zipfile
from pathlib import Path
from unittest import mock

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "tools" / "manual_corpus"))

from manual_corpus import cli  # noqa: E402
from manual_corpus.languages import LANGUAGES  # noqa: E402
from manual_corpus.output import FULL_FOLDER, LOOKUP_FOLDER  # noqa: E402
from manual_corpus.pages import PageFile  # noqa: E402
from manual_corpus.parsed_page import ParsedPage, parse_page  # noqa: E402
from manual_corpus.products import PRODUCTS  # noqa: E402


def man_page(name: str = "f - does it", **sections: str) -> str:
    """A man(7) page; the keywords are its headings, with "_" for a blank."""
    parts = [f".TH X 3\n.SH NAME\n{name}\n"]
    parts += [f".SH {title.replace('_', ' ')}\n{text}\n" for title, text in sections.items()]
    return "".join(parts)


class CorpusCase(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.packages = self.folder / "packages"
        self.root = self.folder / "root"
        # Packages installed on this machine must not get into the results.
        patch = mock.patch("manual_corpus.packages._installed_versions", return_value={})
        patch.start()
        self.addCleanup(patch.stop)
        names = [name for product in PRODUCTS for name in product.packages]
        names += [name for language in LANGUAGES.values() for name in language.packages]
        for name in names:
            self.manual_folder(name).mkdir(parents=True, exist_ok=True)

    def manual_folder(self, package: str) -> Path:
        return self.packages / f"{package}_1.0_all" / "usr/share/man"

    def add_page(self, package: str, place: str, text: str) -> Path:
        """Writes a page; `place` is, for example, "man3/f.3" or "ja/man3/f.3.gz"."""
        path = self.manual_folder(package) / place
        path.parent.mkdir(parents=True, exist_ok=True)
        content = text.encode("utf-8")
        path.write_bytes(gzip.compress(content) if path.suffix == ".gz" else content)
        return path

    def add_link(self, package: str, place: str, target: str) -> None:
        path = self.manual_folder(package) / place
        path.parent.mkdir(parents=True, exist_ok=True)
        path.symlink_to(target)

    def parse(self, text: str, page: str = "f.3", language: str = "en") -> ParsedPage:
        path = self.folder / page
        path.write_text(text, encoding="utf-8")
        name, _, section = page.rpartition(".")
        return parse_page(PageFile(name, section, path, "some-package"), language)

    def run_program(self, *arguments: str, root: Path | None = None) -> tuple[int, str, str]:
        """Exit status, standard output and standard error."""
        fixed = ["--output", str(root or self.root), "--packages", str(self.packages)]
        with contextlib.redirect_stdout(io.StringIO()) as output:
            with contextlib.redirect_stderr(io.StringIO()) as errors:
                status = cli.main([*fixed, *arguments])
        return status, output.getvalue(), errors.getvalue()

    def build(self, *arguments: str) -> str:
        """Builds the root, which must succeed; returns the reported lines."""
        status, _, errors = self.run_program(*arguments)
        self.assertEqual(status, 0, errors)
        return errors

    def full(self, name: str) -> dict:
        return json.loads((self.root / FULL_FOLDER / f"{name}.json").read_text("utf-8"))

    def lookup(self, name: str) -> dict:
        return json.loads((self.root / LOOKUP_FOLDER / f"{name}.json").read_text("utf-8"))

    def zipped_lookup(self, archive: str) -> dict[str, dict]:
        with zipfile.ZipFile(self.root / LOOKUP_FOLDER / archive) as package:
            return {name: json.loads(package.read(name)) for name in package.namelist()}
