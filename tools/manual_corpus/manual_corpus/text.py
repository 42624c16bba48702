"""Text of manual pages: white space, plain ASCII, identifiers."""

import re
import unicodedata

# Stands for a forced line break inside running text; control characters never come from a page.
LINE_BREAK = "\x00"

_WIDE = "\u3000-\u30ff\u3400-\u9fff\uff00-\uffef"
_GAP_BETWEEN_WIDE = re.compile(f"(?<=[{_WIDE}]) (?=[{_WIDE}])")
_INVISIBLE = re.compile("[\u00ad\u200b-\u200f\u2060\ufeff]")

_PLAIN = str.maketrans(
    {
        **dict.fromkeys("\u2010\u2011\u2012\u2013\u2015\u2212", "-"),
        "\u2014": "--",
        **dict.fromkeys("\u2018\u2019\u201a\u2039\u203a\u2032\u00b4", "'"),
        **dict.fromkeys("\u201c\u201d\u201e\u00ab\u00bb\u2033\u300c\u300d", '"'),
        "\u2026": "...",
        "\u2190": "<-",
        "\u2192": "->",
        "\u21d2": "=>",
        "\u2194": "<->",
        "\u2022": "*",
        "\u00b7": ".",
        "\u00d7": "x",
        "\u2264": "<=",
        "\u2265": ">=",
        "\u2260": "!=",
        "\u00a9": "(C)",
        "\u00ae": "(R)",
        "\u2500": "-",
        "\u2502": "|",
    }
)


def collapse(text: str) -> str:
    """One line with single spaces; between wide characters, where lines ended, there is none."""
    return _GAP_BETWEEN_WIDE.sub(
        "", " ".join(_INVISIBLE.sub("", text).replace(LINE_BREAK, " ").split())
    )


def code_line(text: str) -> str:
    return _INVISIBLE.sub("", text).replace("\u00a0", " ").expandtabs().rstrip()


def to_ascii(text: str) -> str:
    """Typographic characters as ASCII; letters of other scripts stay as they are."""
    if text.isascii():
        return text
    plain = (_to_ascii_character(character) for character in _INVISIBLE.sub("", text))
    return "".join(plain)


def _to_ascii_character(character: str) -> str:
    replacement = character.translate(_PLAIN)
    if replacement.isascii():
        return replacement
    if character.isspace():
        return " "
    # Full-width forms and ligatures; an accented letter must not lose its accent.
    compatible = unicodedata.normalize("NFKC", character)
    return compatible if compatible.isascii() else character


def slug(text: str) -> str:
    """An identifier for use after '#': ASCII letters, digits and a few signs."""
    return re.sub(r"[^A-Za-z0-9._-]+", "_", text).strip("_.-")


def anchor(title: str, ident: str) -> str:
    """The identifier of a heading; "" where mandoc made it from only a part of the title."""
    return slug(ident) if title.isascii() else ""


def display_width(text: str) -> int:
    return sum(2 if unicodedata.east_asian_width(character) in "WF" else 1 for character in text)
