"""What is read from a single page."""

import unittest

from corpus_case import CorpusCase, man_page

from manual_corpus.mandoc import BrokenPage
from manual_corpus.parsed_page import parse_page

MDOC_PAGE = """.Dd January 1, 2020
.Dt F 3
.Os
.Sh NAME
.Nm f ,
.Nm g
.Nd count things
.Sh SYNOPSIS
.In stdio.h
.Ft int
.Fn f "const char *text" "int n"
.Sh DESCRIPTION
Counts.
.Bl -tag -width x
.It Fl v
Talks.
.El
.Sh SEE ALSO
.Xr printf 3 ,
.Xr other 7
"""


class NameTest(CorpusCase):
    def test_names_and_purpose(self) -> None:
        cases = {
            r"f \- does it": (["f"], "does it"),
            r"f, g, h \- does - it": (["f", "g", "h"], "does - it"),
            "f(), f() -- does it": (["f"], "does it"),
            "f \\(en does it": (["f"], "does it"),
            "f, g,\n.br\nh \\- does it": (["f", "g", "h"], "does it"),
            "f \\- does it\n.PP\nMore words": (["f"], "does it"),
            "x\\-ray\\-tool \\- looks": (["x-ray-tool"], "looks"),
            "App::Prove \\- prove it": (["App::Prove"], "prove it"),
            "名前、別名 \\- 目的": (["名前", "別名"], "目的"),
        }
        for text, expected in cases.items():
            with self.subTest(text):
                page = self.parse(man_page(text, DESCRIPTION="Text."))
                self.assertEqual((page.names, page.purpose), expected)

    def test_broken_pages_say_why(self) -> None:
        cases = {
            "": "empty page",
            "no macros at all\n": "empty page",
            ".TH X 3\n.SH DESCRIPTION\nText.\n": "no NAME section",
            ".TH X 3\n.SH NAME\n.SH DESCRIPTION\nText.\n": "no NAME section",
            man_page("only words"): "without name and purpose",
            man_page("f \\-"): "without name and purpose",
        }
        for text, reason in cases.items():
            with self.subTest(text), self.assertRaisesRegex(BrokenPage, reason):
                self.parse(text)

    def test_missing_file_is_a_broken_page(self) -> None:
        page = self.parse(man_page()).page
        page.path.unlink()
        with self.assertRaisesRegex(BrokenPage, "mandoc fails"):
            parse_page(page, "en")


class DescriptionTest(CorpusCase):
    def test_plain_text_convention(self) -> None:
        cases = {
            "One\ntwo.\n.PP\nThree.": "One two.\n\nThree.",
            "See:\n.EX\nint a;\n  b;\n.EE": "See:\n\n    int a;\n      b;",
            ".TP\n.B A\nfirst\n.TP\n.B B\nsecond": "- A: first\n\n- B: second",
            ".TP\n.B A:\nfirst": "- A: first",
            ".TP\n.B A\n.TQ\n.B B\nboth": "- A, B: both",
            ".TP\n.B A\nfirst\n.IP\nmore": "- A: first\n\nmore",
            ".TP\n.B A\n.EX\ncode\n.EE": "- A\n\n    code",
            ".IP \\(bu 2\none\n.IP \\(bu\ntwo": "- one\n\n- two",
            ".IP 1. 3\none\n.IP 2.\ntwo": "- 1. one\n\n- 2. two",
            ".SS Part\nText.": "## Part\n\nText.",
            "one\n.br\ntwo": "one\n\ntwo",
            "## not a heading": "    ## not a heading",
            "a\\~b\\&c\\:d": "a bcd",
            ".TS\nl l.\na\tbb\nccc\td\n.TE": "    a    bb\n    ccc  d",
        }
        for text, expected in cases.items():
            with self.subTest(text):
                self.assertEqual(self.parse(man_page(DESCRIPTION=text)).description, expected)

    def test_wide_text_has_no_gaps_at_line_ends(self) -> None:
        page = self.parse(man_page(説明="これは\n長い文\nfoo\nです。"), language="ja")
        self.assertEqual(page.description, "これは長い文 foo です。")

    def test_other_sections_stand_in_for_a_missing_description(self) -> None:
        page = self.parse(man_page(SYNOPSIS="f()", NOTICE="Text.", SEE_ALSO="g(3)"))
        self.assertEqual(page.description, "## NOTICE\n\nText.")


class SynopsisTest(CorpusCase):
    def test_lines(self) -> None:
        cases = {
            ".nf\n.B int f(int a,\n.B          int b);\n.B void g(void);\n.fi": [
                "int f(int a, int b);",
                "void g(void);",
            ],
            ".nf\n#define X    /* See feature_test_macros(7) */\n#include <a.h>\nint f();\n.fi": [
                "#define X    /* See feature_test_macros(7) */",
                "#include <a.h>",
                "int f();",
            ],
            ".nf\nint f();\n.fi\n.RS -4\nNeeds (see\n.BR feature_test_macros (7)):\n.RE\nlate": [
                "int f();",
            ],
            ".nf\nint f();\n.fi\n.PP\n.IR Note :\nThere is no wrapper.": ["int f();"],
            ".nf\n  #include <a.h>\n  int f(int a,\n        int b);\n.fi": [
                "#include <a.h>",
                "int f(int a, int b);",
            ],
            ".nf\nstruct s {\n    int a;\n};\n.fi": ["struct s {", "    int a;", "};"],
            ".nf\nint f(char *\\(lqa\\(rq, \\(em b\\~c…);\n.fi": ['int f(char *"a", -- b c...);'],
        }
        for text, expected in cases.items():
            with self.subTest(text):
                self.assertEqual(self.parse(man_page(SYNOPSIS=text)).syntax, expected)

    def test_command_lines_are_not_joined(self) -> None:
        text = ".B f\n[\\fIopen\n.br\n.B f\n\\-\\-version"
        self.assertEqual(
            self.parse(man_page(SYNOPSIS=text), "f.1").syntax, ["f [open", "f --version"]
        )

    def test_mdoc(self) -> None:
        page = self.parse(MDOC_PAGE)
        self.assertEqual((page.names, page.purpose), (["f", "g"], "count things"))
        self.assertEqual(page.syntax, ["#include <stdio.h>", "int f(const char *text, int n);"])
        self.assertEqual(page.references, [("printf", "3"), ("other", "7")])
        self.assertEqual([group["inputs"][0]["name"] for group in page.input_groups], ["-v"])


class ArgumentTest(CorpusCase):
    def names_values_purposes(self, terms: str, title: str = "OPTIONS") -> list[tuple]:
        groups = self.parse(man_page(**{title: terms}), "f.1").input_groups
        arguments = (argument for group in groups for argument in group["inputs"])
        return [(entry["name"], entry["value"], entry["purpose"]) for entry in arguments]

    def test_terms(self) -> None:
        cases = {
            ".TP\n\\-a, \\-\\-all\nEverything.\n.IP\nMore.": ("-a, --all", [], "Everything."),
            ".TP\n\\-w, \\-\\-width=COLS\nWide.": ("-w, --width", ["COLS"], "Wide."),
            ".TP\n\\-\\-color[=WHEN]\nColor.": ("--color", ["WHEN"], "Color."),
            ".TP\nbs=BYTES\nSize.": ("bs", ["BYTES"], "Size."),
            ".TP\nraise(3)\nSend.": ("raise(3)", [], "Send."),
            '.TP\n"wanted"\nCode.': ("wanted", [], "Code."),
            ".TP\nO_SYNC (since Linux 2.4)\nWait.": ("O_SYNC", [], "(since Linux 2.4) Wait."),
            ".TP\nMODE\nOne of:\n.RS\n.TP\nr\nread\n.TP\nw\nwrite\n.RE": (
                "MODE",
                ["r", "w"],
                "One of:",
            ),
            "\\fB\\-x\\fR, \\fB\\-\\-ex\\fR\n.RS 4\nIndented.\n.RE": ("-x, --ex", [], "Indented."),
        }
        for text, expected in cases.items():
            with self.subTest(text):
                self.assertEqual(self.names_values_purposes(text), [expected])

    def test_marks_of_lists_are_no_arguments(self) -> None:
        for text in (".IP \\(bu 2\none", ".IP 1. 3\none", ".IP (a) 4\none", ".IP * 2\none"):
            with self.subTest(text):
                self.assertEqual(self.names_values_purposes(text), [])

    def test_identifiers_are_unique_and_groups_titled(self) -> None:
        page = self.parse(man_page(DESCRIPTION=".TP\nr\na\n.TP\nr+\nb\n.SS Flags\n.TP\n#\nc"))
        self.assertEqual([group["title"] for group in page.input_groups], ["DESCRIPTION", "Flags"])
        identifiers = [entry["htmlid"] for group in page.input_groups for entry in group["inputs"]]
        self.assertEqual(len(set(identifiers)), 3)
        self.assertTrue(all(identifiers))

    def test_outputs(self) -> None:
        page = self.parse(
            man_page(RETURN_VALUE="Zero.\n.TP\n\\-1\nfailure", EXIT_STATUS="Always 0.")
        )
        self.assertEqual(
            page.outputs,
            [
                {
                    "htmlid": "RETURN_VALUE",
                    "name": "Return value",
                    "purpose": "Zero. -1: failure",
                    "value": ["-1"],
                },
                {"htmlid": "EXIT_STATUS", "name": "Exit status", "purpose": "Always 0."},
            ],
        )

    def test_examples_are_subsections_or_the_section(self) -> None:
        cases = {
            "Try it.": [("EXAMPLES", "EXAMPLES")],
            ".SS One\na\n.SS Two\nb": [("One", "One"), ("Two", "Two")],
        }
        for text, expected in cases.items():
            with self.subTest(text):
                self.assertEqual(self.parse(man_page(EXAMPLES=text)).examples, expected)


class FactTest(CorpusCase):
    def test_first_version(self) -> None:
        cases = {
            "f() was added in glibc 2.1.": "glibc 2.1",
            "This call first appeared in Linux 2.6.16.": "Linux 2.6.16",
            "g() was added in Linux 4.5; library support was added in glibc 2.30.": "",
            "g() was added in Linux 4.5. Library support was added in glibc 2.30.": "",
            "g() was added in Linux 4.5. f() was added in Linux 2.0.": "Linux 2.0",
            "The f() and g() functions were added in OpenSSL 1.1.1.": "OpenSSL 1.1.1",
            "Since Linux 3.1 nothing changed in 2.4.": "",
            "POSIX.1-2001.": "",
        }
        for text, expected in cases.items():
            with self.subTest(text):
                self.assertEqual(self.parse(man_page(HISTORY=text)).introduced, expected)

    def test_deprecation(self) -> None:
        one, two = "f \\- does it", "f, g \\- do it"
        cases = {
            ("f \\- does it (obsolete)", "Text."): ("deprecated", ["f"]),
            (one, "This function is deprecated; use g(3)."): ("deprecated", ["f"]),
            (one, "Never use this function."): ("discouraged", []),
            (one, "This system call no longer exists."): ("removed", ["f"]),
            (two, "These functions are obsolete."): ("deprecated", ["f", "g"]),
            (two, "The g() function is deprecated."): ("", ["g"]),
            (two, "It works. This function is deprecated."): ("", []),
            (one, "Flags with a TYPE are deprecated."): ("", []),
            (one, "One.\n.PP\nTwo.\n.PP\nThis function is deprecated."): ("", []),
        }
        for (name, text), expected in cases.items():
            with self.subTest(f"{name}: {text}"):
                page = self.parse(man_page(name, DESCRIPTION=text))
                self.assertEqual((page.deprecation, page.deprecated_names), expected)

    def test_deprecated_attribute_marks_single_names(self) -> None:
        synopsis = ".nf\nint f(int a);\n[[deprecated]] int g(int a,\n        int b);\n.fi"
        page = self.parse(man_page("f, g \\- do it", SYNOPSIS=synopsis))
        self.assertEqual((page.deprecation, page.deprecated_names), ("", ["g"]))


if __name__ == "__main__":
    unittest.main()
