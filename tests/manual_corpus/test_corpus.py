"""Whole runs over small packages: what the documentation root holds."""

import json
import unittest
from pathlib import Path

from corpus_case import CorpusCase, man_page

GERMAN = "Das ist die Funktion, und sie ist nicht leer, wird aber von der Bibliothek gebraucht."
JAPANESE = "この関数は何もしない。"


def items(document: dict) -> dict[str, dict]:
    return {item["href"]: item for item in document["refItems"]}


def tree(root: Path) -> dict[str, bytes]:
    files = (path for path in sorted(root.rglob("*")) if path.is_file())
    return {str(path.relative_to(root)): path.read_bytes() for path in files}


class ProductTest(CorpusCase):
    def test_every_documented_name_has_a_lookup_record(self) -> None:
        self.add_page(
            "manpages-dev", "man3/f.3.gz", man_page("f, g \\- do it", DESCRIPTION="Text.")
        )
        self.add_page("manpages-dev", "man2/s.2", man_page("s \\- call", DESCRIPTION="Text."))
        self.build("--products", "libc,syscalls")
        function = {"refpurpose": "do it", "href": "libc/f.3.html", "type": "function"}
        self.assertEqual(
            self.lookup("libc")["refItems"],
            [{"name": name, "fcntype": "function"} | function for name in ("f", "g")],
        )
        entity = {"type": "function", "fcntype": "systemcall", "name": "s"}
        item = items(self.full("syscalls"))["syscalls/s.2.html"]
        self.assertEqual((item["refentity"], item["packagename"]), ([entity], "manpages-dev"))

    def test_installed_products_leave_out_the_documented_one(self) -> None:
        self.add_page("libssl-doc", "man3/SSL_new.3ssl", man_page("SSL_new \\- make"))
        self.add_page("perl-doc", "man3/A::B.3perl", man_page("A::B \\- module"))
        self.build("--products", "openssl,perl")
        products = json.loads((self.root / "installedProducts.json").read_text())
        self.assertEqual([product["shortName"] for product in products], ["perl"])
        self.assertIn("openssl/SSL_new.3ssl.html", items(self.full("openssl")))
        self.assertIn("perl/A::B.3perl.html", items(self.full("perl")))

    def test_pages_of_other_libraries_go_to_support_packages(self) -> None:
        for name, library in (
            ("sin", "Math library (libm, -lm)"),
            ("aio", "Real-time library (librt)"),
        ):
            text = man_page(f"{name} \\- do it", LIBRARY=library, DESCRIPTION="Text.")
            self.add_page("manpages-dev", f"man3/{name}.3", text)
        german = man_page(
            "sin \\- Sinus", BIBLIOTHEK="Mathebibliothek (libm, -lm)", BESCHREIBUNG=GERMAN
        )
        self.add_page("manpages-de-dev", "de/man3/sin.3", german)
        japanese = man_page("sin \\- 正弦", 説明=JAPANESE)
        self.add_page("manpages-ja-dev", "ja/man3/sin.3", japanese)
        self.build("--products", "libc", "--languages", "de,ja")
        packages = {
            package["baseCode"]: package for package in self.full("libc")["supportPackages"]
        }
        self.assertEqual(set(packages), {"libm", "librt"})
        self.assertEqual(packages["libm"]["productName"], "Math library")
        self.assertEqual(packages["libm"]["helpFolder"], "libc")
        self.assertIn("libc/sin.3.html", items(packages["libm"]))
        self.assertEqual(self.full("libc")["refItems"], [])
        localized = self.lookup("libc_de")["supportPackages"]
        self.assertEqual([package["productName"] for package in localized], ["Mathebibliothek"])
        japanese = self.lookup("libc_ja")["supportPackages"]
        self.assertEqual([package["productName"] for package in japanese], ["数学ライブラリ"])
        # One documented support package is not installed.
        folders = [path.name for path in (self.root / "supportPackages").iterdir()]
        self.assertEqual(folders, ["libm"])

    def test_packaging_of_lookup_files(self) -> None:
        for place in ("man1/ls.1", "man5/proc.5", "man3/f.3"):
            package = "coreutils" if "ls" in place else "manpages"
            name = place.split("/")[1][:-2]
            self.add_page(package, place, man_page(f"{name} \\- thing"))
            german = man_page(f"{name} \\- Ding", BESCHREIBUNG=GERMAN)
            self.add_page("manpages-de", f"de/{place}", german)
        self.build("--products", "commands,formats,libc", "--languages", "de")
        self.assertEqual(
            {name for name in tree(self.root) if "lookup" in name},
            {
                f"docCatalog/referenceapi_lookup/{name}"
                for name in (
                    "commands.zip",
                    "commands_de.zip",
                    "formats.zip",
                    "libc.json",
                    "libc_de.json",
                )
            },
        )
        self.assertEqual(list(self.zipped_lookup("commands_de.zip")), ["commands_de.json"])
        self.assertEqual(
            list(self.zipped_lookup("formats.zip")), ["formats.json", "formats_de.json"]
        )

    def test_links_lead_to_items_only(self) -> None:
        text = "f(3), g(3), e(3), gone(3), x(2)"
        self.add_page("manpages-dev", "man3/f.3", man_page("f, e \\- do it", SEE_ALSO=text))
        self.add_page("manpages-dev", "man3/g.3", man_page("g \\- do it"))
        self.add_page("manpages-dev", "man2/x.2", man_page("x \\- call", SEE_ALSO="alias(3)"))
        self.add_link("manpages-dev", "man3/alias.3", "g.3")
        self.build("--products", "libc,syscalls")
        self.assertEqual(
            items(self.full("libc"))["libc/f.3.html"]["seealso"],
            [
                {"url": "libc/g.3.html", "name": "g(3)"},
                {"url": "syscalls/x.2.html", "name": "x(2)"},
            ],
        )
        alias = items(self.full("syscalls"))["syscalls/x.2.html"]["seealso"]
        self.assertEqual(alias, [{"url": "libc/g.3.html", "name": "alias(3)"}])

    def test_own_product_comes_first_for_a_link(self) -> None:
        self.add_page("manpages-dev", "man3/new.3", man_page("new \\- other"))
        self.add_page("libssl-doc", "man3/new.3ssl", man_page("new \\- own"))
        self.add_page("libssl-doc", "man3/a.3ssl", man_page("a \\- x", SEE_ALSO="new(3)"))
        self.build("--products", "libc,openssl")
        link = items(self.full("openssl"))["openssl/a.3ssl.html"]["seealso"][0]
        self.assertEqual(link["url"], "openssl/new.3ssl.html")

    def test_options_with_values_are_name_value_pairs(self) -> None:
        options = ".TP\n\\-a\nAll.\n.TP\n\\-\\-size=N\nBig."
        self.add_page("coreutils", "man1/ls.1", man_page("ls \\- list", OPTIONS=options))
        self.build("--products", "commands")
        pair = {"htmlid": "size_N", "name": "--size", "purpose": "Big.", "value": ["N"]}
        self.assertEqual(
            items(self.full("commands"))["commands/ls.1.html"]["inputgroup"],
            [
                {
                    "title": "OPTIONS",
                    "inputs": [{"htmlid": "a", "name": "-a", "purpose": "All."}],
                },
                {
                    "namevaluepairs": [
                        {"title": "OPTIONS", "inputs": [pair | {"syntaxtype": "namevalue"}]}
                    ]
                },
            ],
        )


class TranslationTest(CorpusCase):
    def translate(self, english: str, translated: str, language: str = "ja") -> str:
        """Builds from one page and its translation; returns the reported lines."""
        self.add_page("manpages-dev", "man3/f.3", english)
        self.add_page(f"manpages-{language}-dev", f"{language}/man3/f.3", translated)
        return self.build("--products", "libc", "--languages", language)

    def item(self, language: str = "ja") -> dict:
        return items(self.full(f"libc_{language}"))["libc/f.3.html"]

    def test_headings_of_the_languages(self) -> None:
        rows = {
            "ja": ("名前", "書式", "説明", "返り値", "例", JAPANESE),
            "de": ("BEZEICHNUNG", "ÜBERSICHT", "BESCHREIBUNG", "RÜCKGABEWERT", "BEISPIELE", GERMAN),
            "fr": ("NOM", "SYNOPSIS", "DESCRIPTION", "VALEUR RENVOYÉE", "EXEMPLES",
                   "La fonction est dans la bibliothèque et ne fait pas de bruit."),
        }  # fmt: skip
        for language, (name, synopsis, description, returns, examples, text) in rows.items():
            with self.subTest(language):
                page = (
                    f".TH F 3\n.SH {name}\nf \\- ÄÉ目的\n.SH {synopsis}\nint f(void);\n"
                    f".SH {description}\n{text}\n.SH {returns}\nNull.\n.SH {examples}\nx\n"
                )
                self.translate(man_page("f \\- does it"), page, language)
                item = self.item(language)
                self.assertEqual((item["refpurpose"], item["description"]), ("ÄÉ目的", text))
                self.assertEqual(item["syntaxgroup"][0]["title"], synopsis)
                self.assertEqual(item["outputs"][0]["name"], returns.capitalize())
                self.assertEqual(item["outputs"][0]["htmlid"], "RETURN_VALUE")
                command = f"man -L {language} 3 f"
                self.assertEqual(item["examples"][0]["open_command"], command)

    def test_untranslated_pages_are_left_out(self) -> None:
        english = man_page("f \\- does it", DESCRIPTION="This is the text of a page that says it.")
        partly = man_page("f \\- macht es", BESCHREIBUNG="This is the text of a page that says it.")
        for translated in (english, partly):
            with self.subTest(translated):
                report = self.translate(english, translated, "de")
                self.assertIn("de: f.3: not really translated", report)
                self.assertFalse((self.root / "docCatalog/referenceapi/libc_de.json").exists())

    def test_syntax_that_cannot_be_ascii_comes_from_the_original(self) -> None:
        english = man_page(SYNOPSIS=".nf\nint f(int size);\n.fi")
        cases = {
            "int f(int größe);": ["int f(int size);"],
            "int f(int laenge …);": ["int f(int laenge ...);"],
        }
        for line, expected in cases.items():
            with self.subTest(line):
                german = man_page("f \\- tut", ÜBERSICHT=f".nf\n{line}\n.fi", BESCHREIBUNG=GERMAN)
                self.translate(english, german, "de")
                self.assertEqual(self.item("de")["syntaxgroup"][0]["syntax"], expected)

    def test_names_of_arguments(self) -> None:
        one = ".TP\nMODE\nHow."
        cases = {
            (one, ".TP\nMODE\n方法。"): ["MODE"],
            (one, ".TP\nモード\n方法。"): ["MODE"],
            (one, ".TP\nA (Linux 2.4 以降)\n方法。"): ["A"],
            ("None.", ".TP\n\\-a, \\-\\-all モード\n方法。"): ["-a, --all"],
            ("None.", ".TP\nモード\n方法。"): [],
        }
        for (english, japanese), expected in cases.items():
            with self.subTest(japanese):
                report = self.translate(
                    man_page(DESCRIPTION=english),
                    man_page("f \\- 何か", 説明=JAPANESE + "\n" + japanese),
                )
                groups = self.item().get("inputgroup", [])
                names = [entry["name"] for group in groups for entry in group["inputs"]]
                self.assertEqual(names, expected)
                self.assertEqual("left out: not ASCII" in report, not expected)

    def test_facts_come_from_the_original(self) -> None:
        text = "This function is deprecated."
        english = man_page(DESCRIPTION=text, HISTORY="f() appeared in glibc 2.1.")
        self.translate(english, man_page("f \\- 何か", 説明=JAPANESE))
        item = self.item()
        self.assertEqual(
            (item["introduced"], item["deprecationstatus"]), ("glibc 2.1", "deprecated")
        )
        self.assertIs(self.lookup("libc_ja")["refItems"][0]["deprecated"], True)

    def test_pages_find_their_originals(self) -> None:
        self.add_page("manpages-dev", "man3/f.3", man_page("f, g \\- do it"))
        self.add_link("manpages-dev", "man3/g.3", "f.3")
        self.add_page("manpages-dev", "man3/T.3type", man_page("T \\- type"))
        for name in ("f", "g", "T", "lost"):
            page = man_page(f"{name} \\- 何か", 説明=JAPANESE)
            self.add_page("manpages-ja-dev", f"ja/man3/{name}.3", page)
        report = self.build("--products", "libc", "--languages", "ja")
        self.assertEqual(set(items(self.full("libc_ja"))), {"libc/f.3.html", "libc/T.3type.html"})
        self.assertEqual(self.full("libc_ja")["refItems"][1]["refentity"][0]["name"], "f")
        self.assertEqual(report, "ja: g.3: a second translation of f.3\n")


class OddPageTest(CorpusCase):
    def test_odd_pages_are_reported_and_left_out(self) -> None:
        self.add_page("manpages-dev", "man3/f.3", man_page("f, so, link \\- do it"))
        self.add_page("manpages-dev", "man3/so.3", '.\\" comment\n.so man3/f.3\n')
        self.add_link("manpages-dev", "man3/link.3.gz", "so.3.gz")
        self.add_link("manpages-dev", "man3/loop.3", "loop2.3")
        self.add_link("manpages-dev", "man3/loop2.3", "loop.3")
        self.add_page("manpages-dev", "man3/stub.3", ".so man3/nowhere.3\n")
        self.add_page("manpages-dev", "man3/empty.3", "")
        self.add_page("manpages-dev", "man3/noname.3", man_page("words only"))
        self.add_page("manpages-dev", "man3/README", "text")
        self.add_page("manpages-dev", "man3/cut.3.gz", "x").write_bytes(b"\x1f\x8b\x08\x00cut")
        report = self.build("--products", "libc")
        self.assertEqual(list(items(self.full("libc"))), ["libc/f.3.html"])
        odd = ("loop.3:", "loop2.3:", "stub.3: alias of a missing page", "empty.3: empty page",
               "noname.3: NAME section without", "README: not the name", "cut.3:")  # fmt: skip
        for fragment in odd:
            self.assertEqual(report.count(fragment), 1, f"{fragment} in\n{report}")
        self.assertEqual(len(report.splitlines()), len(odd))

    def test_report_file_and_summary(self) -> None:
        self.add_page("manpages-dev", "man3/f.3", man_page("f, g \\- do it"))
        self.add_page("manpages-dev", "man3/bad.3", "")
        report = self.folder / "report"
        status, output, errors = self.run_program("--products", "libc", "--report", str(report))
        self.assertEqual((status, errors), (0, ""))
        self.assertEqual(report.read_text(), "en: bad.3: empty page\n")
        self.assertIn(["libc", "1", "2"], [line.split() for line in output.splitlines()])
        self.assertIn("1 pages or arguments reported", output)

    def test_names_with_signs_make_ascii_links(self) -> None:
        self.add_page("coreutils", "man1/[.1", man_page("[ \\- test"))
        self.add_page("manpages", "man7/größe.7", man_page("x \\- y"))
        report = self.build("--products", "commands,formats")
        self.assertEqual(list(items(self.full("commands"))), ["commands/%5B.1.html"])
        self.assertIn("größe.7: not the name of a manual page", report)


if __name__ == "__main__":
    unittest.main()
