"""Whether a page says that its subject should not be used any more."""

import re
from fnmatch import fnmatchcase

from .document import Paragraph, Section, nested_blocks

# A page that is about its whole subject says so at the beginning.
_OPENING_PARAGRAPHS = 2

_STATUSES = {
    "removed": re.compile(
        r"\b(?:was|were|has been|have been) (?:finally )?removed (?:from|in) (?:the )?"
        r"(?:Linux|glibc|kernel|Perl)|\bno longer (?:exists?|present|available|provided)\b"
    ),
    "deprecated": re.compile(
        r"\b(?:is|are|has been|have been) (?:now )?(?:considered )?"
        r"(?:deprecated|obsolete|obsolescent|obsoleted)\b|\((?:deprecated|obsolete)\)",
        re.IGNORECASE,
    ),
    "discouraged": re.compile(
        r"^(?:Note: )?(?:Never|Do not|Don't|Avoid) us(?:e|ing) (?:this|these|it\b|the\b)"
        r"|\buse of (?:this|these) [\w ]{0,30}is (?:strongly )?discouraged\b",
        re.IGNORECASE,
    ),
}
_PURPOSE = re.compile(r"^\W*(?:deprecated|obsolete)\b|\((?:deprecated|obsolete)\)", re.IGNORECASE)
_WHOLE_SUBJECT = re.compile(
    r"\b(?:this|these|all|both)\b[\w ]*?"
    r"\b(?:functions?|system calls?|interfaces?|API|routines?|command|\w+ frontend|drivers?)\b"
    r"|\bit\b",
    re.IGNORECASE,
)
_PART_OF_SUBJECT = re.compile(r"\bTYPE\b|\bexcept\b|\bmodel\b|\bversions?\b|\breleases?\b")
_FUNCTION = re.compile(r"([\w.]+\*?)\(\)")


def deprecation(names: list[str], purpose: str, sections: list[Section]) -> tuple[str, list[str]]:
    """A DeprecationStatus text, or "", and the names that it is about."""
    if _PURPOSE.search(purpose):
        return "deprecated", names
    for sentence in _opening_sentences(sections):
        for status, pattern in _STATUSES.items():
            match = pattern.search(sentence)
            concerned = _concerned(names, sentence) if match else []
            if concerned:
                return status, concerned
    return "", []


def _opening_sentences(sections: list[Section]) -> list[str]:
    blocks = [
        block for section in sections if section.kind == "description" for block in section.blocks
    ]
    paragraphs = [block for block in nested_blocks(blocks) if isinstance(block, Paragraph)]
    text = ". ".join(" ".join(block.lines) for block in paragraphs[:_OPENING_PARAGRAPHS])
    return re.split(r"\.\s+", text)


def _concerned(names: list[str], sentence: str) -> list[str]:
    """The names that a sentence is about: those it mentions, or all where it says so."""
    if _PART_OF_SUBJECT.search(sentence):
        return []
    mentioned = _FUNCTION.findall(sentence)
    if mentioned:
        return [name for name in names if any(fnmatchcase(name, pattern) for pattern in mentioned)]
    whole = _WHOLE_SUBJECT.search(sentence)
    # "This function" on a page about several is the one of its own paragraph.
    alone = len(names) == 1 or (
        whole is not None and re.match(r"(?i)this (?:function|routine)\b", whole[0]) is None
    )
    return names if whole and alone else []
