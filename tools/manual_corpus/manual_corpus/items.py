"""The records of the resource files: a full item per page, a lookup record per documented name."""

from collections.abc import Callable, Iterator

from .arguments import ascii_part
from .links import LinkIndex
from .parsed_page import ParsedPage
from .products import Product, entity_types, syntax_type

Report = Callable[[str], None]


class ItemBuilder:
    """Builds the records of one page; `original` is the English page, or the page itself.

    What must be ASCII and is not so in a translation comes from the original.
    """

    def __init__(self, parsed: ParsedPage, original: ParsedPage, product: Product, href: str):
        self._parsed = parsed
        self._original = original
        self._product = product
        self.href = href

    @property
    def section(self) -> str:
        return self._original.page.section

    def names(self) -> list[str]:
        """The names that both have: a translation may name fewer or more, but not others."""
        known = [name for name in self._parsed.names if name in self._original.names]
        return known or self._original.names

    def full_item(self, links: LinkIndex, report: Report) -> dict:
        item = {
            "href": self.href,
            "refpurpose": self._parsed.purpose,
            "refentity": [self._entity(name) for name in self.names()],
            "packagename": self._parsed.page.package,
            "introduced": self._original.introduced,
            "description": self._parsed.description,
            "deprecationstatus": self._original.deprecation,
            "syntaxgroup": self._syntax_groups(),
            "inputgroup": list(self._input_groups(report)),
            "outputs": self._parsed.outputs,
            "seealso": self._see_also(links),
            "examples": self._examples(),
        }
        return {key: value for key, value in item.items() if value or key == "refpurpose"}

    def lookup_records(self) -> list[dict]:
        return [self._lookup_record(name) for name in self.names()]

    def _lookup_record(self, name: str) -> dict:
        record = {"name": name, "refpurpose": self._parsed.purpose, "href": self.href}
        record |= self._types(name)
        # Readers check only whether this member is there.
        if name in self._original.deprecated_names:
            record["deprecated"] = True
        return record

    def _entity(self, name: str) -> dict:
        return self._types(name) | {"name": name}

    def _types(self, name: str) -> dict:
        entity, function = entity_types(self._product, self.section, name)
        return {"type": entity} | ({"fcntype": function} if function else {})

    def _syntax_groups(self) -> list[dict]:
        lines = self._parsed.syntax
        if not all(line.isascii() for line in lines):
            ascii_lines = [line for line in lines if line.isascii()]
            lines = [line for line in self._original.syntax if line.isascii()] or ascii_lines
        if not lines:
            return []
        title = self._parsed.syntax_title
        return [{"syntaxtype": syntax_type(self.section), "title": title, "syntax": lines}]

    def _input_groups(self, report: Report) -> Iterator[dict]:
        """Each group as read; its options with values follow as a group of name-value pairs."""
        for index, group in enumerate(self._parsed.input_groups):
            counterpart = self._counterpart(index, len(group["inputs"]))
            named = [
                argument | {"name": name}
                for position, argument in enumerate(group["inputs"])
                if (name := self._argument_name(argument, counterpart, position, report))
            ]
            plain = [_argument(argument) for argument in named if not argument["pair"]]
            pairs = [_argument(argument) for argument in named if argument["pair"]]
            if plain:
                yield {"title": group["title"], "inputs": plain}
            if pairs:
                yield {"namevaluepairs": [{"title": group["title"], "inputs": pairs}]}

    def _counterpart(self, index: int, size: int) -> list[dict]:
        """The inputs of the original's group at the same place, when the two correspond."""
        groups = self._original.input_groups
        if len(groups) != len(self._parsed.input_groups) or len(groups[index]["inputs"]) != size:
            return []
        return groups[index]["inputs"]

    def _argument_name(
        self, argument: dict, counterpart: list[dict], position: int, report: Report
    ) -> str:
        name = argument["name"]
        if name.isascii():
            return name
        original = counterpart[position]["name"] if counterpart else ""
        name = original if original.isascii() and original else ascii_part(name)
        if not name or not name.isascii():
            report(f"argument {argument['name']!r} left out: not ASCII")
            return ""
        return name

    def _see_also(self, links: LinkIndex) -> list[dict]:
        found: dict[str, str] = {}
        for name, section in self._parsed.references:
            href = links.find(name, section, self._product)
            if href is not None and href != self.href:
                found.setdefault(href, f"{name}({section})" if section else name)
        return [{"url": href, "name": name} for href, name in found.items()]

    def _examples(self) -> list[dict]:
        page = self._original.page
        locale = "" if self._parsed is self._original else f"-L {self._parsed.language} "
        command = f"man {locale}{page.section} {page.name}"
        return [
            {"url": f"{self.href}#{ident}", "open_command": command, "title": title}
            for ident, title in self._parsed.examples
        ]


def _argument(argument: dict) -> dict:
    record = {key: argument[key] for key in ("htmlid", "name", "purpose", "value")}
    if argument["pair"]:
        record["syntaxtype"] = "namevalue"
    return {key: value for key, value in record.items() if value or key == "purpose"}
