"""The checks of a documentation root find every kind of fault."""

import json
import unittest
from collections.abc import Callable

from corpus_case import CorpusCase, man_page

from manual_corpus.check import check_root
from manual_corpus.output import FULL_FOLDER, LOOKUP_FOLDER


class CheckTest(CorpusCase):
    def setUp(self) -> None:
        super().setUp()
        text = man_page(
            "f \\- does it",
            LIBRARY="Math library (libm)",
            SYNOPSIS=".nf\nint f();\n.fi",
            DESCRIPTION=".TP\nA\na\n.TP\n\\-\\-b=C\nc",
            RETURN_VALUE="Zero.",
            EXAMPLES="x",
            SEE_ALSO="g(3)",
        )
        self.add_page("manpages-dev", "man3/f.3", text)
        self.add_page("manpages-dev", "man3/g.3", man_page("g \\- does it"))
        self.build("--products", "libc")
        self.sound = {folder: self.document(folder) for folder in (FULL_FOLDER, LOOKUP_FOLDER)}

    def document(self, folder: str) -> dict:
        return json.loads((self.root / folder / "libc.json").read_text("utf-8"))

    def faults_after(self, folder: str, damage: Callable[[dict], None]) -> list[str]:
        document = json.loads(json.dumps(self.sound[folder]))
        damage(document)
        path = self.root / folder / "libc.json"
        path.write_text(json.dumps(document), "utf-8")
        faults = check_root(self.root)
        path.write_text(json.dumps(self.sound[folder]), "utf-8")
        return faults

    def test_the_sound_root_uses_every_list(self) -> None:
        item = self.sound[FULL_FOLDER]["supportPackages"][0]["refItems"][0]
        lists = ("refentity", "syntaxgroup", "inputgroup", "outputs", "seealso", "examples")
        self.assertLessEqual(set(lists), item.keys())
        self.assertEqual(check_root(self.root), [])

    def test_damage_to_full_items(self) -> None:
        cases = {
            "'href' is a required": lambda item: item.pop("href"),
            "refpurpose: None is not of type": lambda item: item.update(refpurpose=None),
            "refentity[0].type: 'cat' is not": lambda item: item["refentity"][0].update(type="cat"),
            "syntax[0]: 'ä' is not ASCII": lambda item: item["syntaxgroup"][0].update(syntax=["ä"]),
            "inputs[0].name: 'ä' is not ASCII": lambda item: item["inputgroup"][0]["inputs"][
                0
            ].update(name="ä"),
            "namevaluepairs[0]: 'title'": lambda item: item["inputgroup"][1]["namevaluepairs"][
                0
            ].pop("title"),
            "inputgroup[1]: Additional": lambda item: item["inputgroup"][1].update(title="x"),
            "outputs[0].htmlid: 'ä' is not": lambda item: item["outputs"][0].update(htmlid="ä"),
            "link to libc/x.html": lambda item: item["seealso"][0].update(url="libc/x.html"),
            "('colour' was unexpected)": lambda item: item.update(colour="red"),
        }
        for fault, damage in cases.items():
            with self.subTest(fault):
                faults = self.faults_after(
                    FULL_FOLDER, lambda file: damage(file["supportPackages"][0]["refItems"][0])
                )
                self.assertEqual(len(faults), 1, faults)
                self.assertIn(fault, faults[0])

    def test_damage_to_files(self) -> None:
        cases = {
            (FULL_FOLDER, "$: 'productName'"): lambda file: file.pop("productName"),
            (FULL_FOLDER, "[0]: 'refItems'"): lambda file: file["supportPackages"][0].pop(
                "refItems"
            ),
            (FULL_FOLDER, "'more' was unexpected"): lambda file: file.update(more=1),
            (FULL_FOLDER, "'supportPackages' was unexpected"): lambda file: file[
                "supportPackages"
            ][0].update(supportPackages=[]),
            (LOOKUP_FOLDER, "$.refItems[0]: 'name'"): lambda file: file["refItems"][0].pop("name"),
            (LOOKUP_FOLDER, "'ä' is not ASCII"): lambda file: file["refItems"][0].update(href="ä"),
            (LOOKUP_FOLDER, "not in both the full"): lambda file: file.update(refItems=[]),
        }
        for (folder, fault), damage in cases.items():
            with self.subTest(fault):
                faults = self.faults_after(folder, damage)
                self.assertEqual(len(faults), 1, faults)
                self.assertIn(fault, faults[0])

    def test_missing_and_broken_files(self) -> None:
        path = self.root / LOOKUP_FOLDER / "libc.json"
        other = self.root / FULL_FOLDER / "other.zip"
        for content in (b"[", b"", b"\xff", b"[" * 100000):
            for broken in (path, other):
                broken.write_bytes(content)
            faults = check_root(self.root)
            self.assertEqual([fault.split(": ")[0] for fault in faults], [str(other), str(path)])
        other.unlink()
        path.unlink()
        self.assertIn("not in both catalog folders", check_root(self.root)[0])


if __name__ == "__main__":
    unittest.main()
