"""The client's check accepts what the program writes."""

import os
import subprocess
import unittest

from corpus_case import CorpusCase, man_page

from manual_corpus.output import LOOKUP_FOLDER

REFDOC = os.environ.get("REFDOC")
JAPANESE = "この関数は何もしない。"


@unittest.skipUnless(REFDOC, "REFDOC names no client")
class RefdocCheckTest(CorpusCase):
    def setUp(self) -> None:
        super().setUp()
        text = man_page(
            "f, g \\- do it",
            LIBRARY="Math library (libm)",
            SYNOPSIS=".nf\nint f();\n.fi",
            DESCRIPTION=".TP\nA\na\n.TP\n\\-\\-b=C\nc",
            RETURN_VALUE="Zero.",
            EXAMPLES="x",
            SEE_ALSO="h(3), s(2)",
        )
        self.add_page("manpages-dev", "man3/f.3.gz", text)
        self.add_page("manpages-dev", "man3/h.3", man_page("h \\- help", SEE_ALSO="f(3)"))
        self.add_page("manpages-dev", "man2/s.2", man_page("s \\- call", DESCRIPTION="Text."))
        japanese = man_page(f"f, g \\- {JAPANESE}", DESCRIPTION=JAPANESE, SEE_ALSO="h(3)")
        self.add_page("manpages-ja-dev", "ja/man3/f.3", japanese)
        self.build("--products", "libc,syscalls")

    def refdoc(self, *arguments: str) -> tuple[int, str]:
        command = [str(REFDOC), "--root", str(self.root), *arguments]
        result = subprocess.run(command, capture_output=True, text=True, timeout=60)
        return result.returncode, result.stdout

    def test_a_root_of_manual_pages_passes(self) -> None:
        status, output = self.refdoc("check")
        self.assertTrue(output.startswith("0 errors, 0 warnings and 0 notes in "), output)
        self.assertEqual(status, 0)
        names = [path.name for path in (self.root / LOOKUP_FOLDER).iterdir()]
        self.assertTrue(any("_ja" in name for name in names), names)


if __name__ == "__main__":
    unittest.main()
