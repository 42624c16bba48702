"""How a run treats an existing root: stamp, replacement, determinism, errors."""

import os
import unittest
import zipfile
from pathlib import Path
from unittest import mock

from corpus_case import CorpusCase, man_page
from test_corpus import GERMAN, tree

from manual_corpus import cli, packages


class RunTest(CorpusCase):
    def setUp(self) -> None:
        super().setUp()
        for number in range(20):
            name = f"f{number}"
            text = man_page(f"{name} \\- do it", SEE_ALSO="f1(3)")
            self.page = self.add_page("manpages-dev", f"man3/{name}.3", text)
            german = man_page(f"{name} \\- tut es", BESCHREIBUNG=GERMAN)
            self.add_page("manpages-de-dev", f"de/man3/{name}.3", german)
        self.add_page("manpages", "man5/g.5", man_page("g \\- format"))
        self.arguments = ["--products", "libc,formats", "--languages", "de"]

    def run_here(self, *more: str) -> tuple[int, str, str]:
        return self.run_program(*self.arguments, *more)

    def test_same_input_gives_the_same_bytes(self) -> None:
        other = self.folder / "other"
        self.run_here("--jobs", "1")
        self.run_program(*self.arguments, "--jobs", "3", root=other)
        self.assertEqual(tree(self.root), tree(other))
        with zipfile.ZipFile(self.root / "docCatalog/referenceapi_lookup/formats.zip") as archive:
            times = {entry.date_time for entry in archive.infolist()}
        self.assertEqual(times, {(1980, 1, 1, 0, 0, 0)})

    def test_unchanged_root_is_left_alone_and_any_change_is_seen(self) -> None:
        changes = {
            "page": lambda: self.page.write_text(man_page("f19 \\- do more")),
            "new page": lambda: self.add_page("manpages-dev", "man3/n.3", man_page("n \\- new")),
            "version": lambda: self.rename_package(),
            "option": lambda: self.arguments.extend(["--languages", "de,ja"]),
        }
        self.run_here()
        for what, change in changes.items():
            with self.subTest(what):
                inode = os.stat(self.root).st_ino
                _, output, _ = self.run_here()
                self.assertIn("up to date", output)
                self.assertEqual(os.stat(self.root).st_ino, inode)
                change()
                _, output, _ = self.run_here()
                self.assertNotIn("up to date", output)

    def rename_package(self) -> None:
        folder = self.packages / "manpages_1.0_all"
        folder.rename(folder.with_name("manpages_1.1_all"))

    def test_a_failing_or_interrupted_run_leaves_the_old_root(self) -> None:
        self.run_here()
        before = tree(self.root)
        self.page.write_text(man_page("f19 \\- do more"))
        failures = {
            "fault": mock.patch("manual_corpus.build.check_root", return_value=["a fault"]),
            "interrupt": mock.patch(
                "manual_corpus.build.write_root", side_effect=KeyboardInterrupt
            ),
            "full disk": mock.patch("manual_corpus.build.write_stamp", side_effect=OSError("full")),
        }
        for what, failure in failures.items():
            with self.subTest(what), failure:
                status, _, errors = self.run_here()
                self.assertNotEqual((status, errors), (0, ""))
                self.assertEqual(tree(self.root), before)
                self.assertEqual(
                    {path.name for path in self.folder.iterdir()}, {"packages", "root"}
                )

    def test_a_foreign_folder_is_not_replaced(self) -> None:
        self.root.mkdir()
        (self.root / "precious").write_text("mine")
        status, _, errors = self.run_here()
        self.assertEqual(status, 1)
        self.assertIn("not a documentation root of this program", errors)
        self.assertEqual(tree(self.root), {"precious": b"mine"})

    def test_a_root_without_its_stamp_counts_as_foreign(self) -> None:
        self.run_here()
        (self.root / ".corpus-stamp.json").unlink()
        self.assertEqual(self.run_here()[0], 1)

    def test_wrong_arguments_get_a_clear_message(self) -> None:
        cases = {
            ("--languages", "xx"): "unknown language 'xx'",
            ("--products", "nope"): "unknown product 'nope'",
            ("--jobs", "0"): "'0' is not a positive number",
        }
        for arguments, message in cases.items():
            with self.subTest(arguments), mock.patch("sys.stderr") as errors:
                with self.assertRaises(SystemExit) as ended:
                    cli.main(["--output", str(self.root), *arguments])
                self.assertEqual(ended.exception.code, 2)
                written = "".join(call.args[0] for call in errors.write.call_args_list)
                self.assertIn(message, written)

    def test_check_finds_damage(self) -> None:
        self.run_here()
        self.assertEqual(self.run_program("--check")[0], 0)
        lookup = self.root / "docCatalog/referenceapi_lookup/libc.json"
        lookup.write_text(lookup.read_text().replace("libc/f1.3.html", "libc/f99.3.html"))
        status, output, _ = self.run_program("--check")
        self.assertEqual(status, 1)
        self.assertIn("libc/f99.3.html", output)


class PackageTest(CorpusCase):
    """Packages that are not unpacked yet, with a stand-in for the tools that fetch them."""

    def obtain(self, failing: str = "") -> list[list[str]]:
        commands = []

        def run(command, folder):
            commands.append(command)
            result = mock.Mock(returncode=0, stdout="", stderr="")
            if command[0] == failing:
                result.returncode, result.stderr = 100, "E: Unable to locate package new"
            elif command[0] == "apt-get":
                (folder / "new_2.0_all.deb").write_bytes(b"")
            else:
                path = os.path.join(command[-1], "usr/share/man/man1/n.1")
                os.makedirs(os.path.dirname(path))
                open(path, "w").close()
            return result

        with mock.patch.object(packages, "_run", run):
            self.found = packages.obtain_packages(["manpages", "new"], self.packages)
        return commands

    def test_only_missing_packages_are_fetched_and_then_kept(self) -> None:
        commands = self.obtain()
        self.assertEqual([command[0] for command in commands], ["apt-get", "dpkg-deb"])
        self.assertEqual(commands[0][-2:], ["download", "new"])
        self.assertEqual(self.found["new"].version, "2.0")
        self.assertEqual([page.name for page in self.found["new"].pages], ["n.1"])
        self.assertEqual(self.obtain(), [])

    def test_installed_packages_count_only_with_all_their_pages(self) -> None:
        root = self.folder / "system"
        for names, expected in ((["a.1"], True), (["a.1", "b.1"], False), ([], False)):
            with self.subTest(names):
                self.add_system_pages(root, ["a.1"])
                listing = "\n".join(["/.", str(root), *(f"{root}/man1/{name}" for name in names)])
                run = mock.Mock(return_value=mock.Mock(stdout=listing))
                with (
                    mock.patch.object(packages, "_run", run),
                    mock.patch.object(packages, "MANUAL_FOLDER", str(root)[1:]),
                ):
                    package = packages._installed_package("some", "1.0")
                self.assertEqual(package is not None, expected)

    def add_system_pages(self, root: Path, names: list[str]) -> None:
        (root / "man1").mkdir(parents=True, exist_ok=True)
        for name in names:
            (root / "man1" / name).touch()

    def test_failures_are_told_with_what_helps(self) -> None:
        cases = {
            "apt-get": "Unable to locate package new.*\n.*apt-get update",
            "dpkg-deb": "cannot unpack",
        }
        for tool, message in cases.items():
            with self.subTest(tool), self.assertRaisesRegex(packages.CorpusError, message):
                self.obtain(failing=tool)
            self.assertFalse(list(self.packages.glob("new_*_all")))


if __name__ == "__main__":
    unittest.main()
