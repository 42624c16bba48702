"""Puts parsed pages together into the documents of each product and language."""

from collections import Counter, defaultdict
from dataclasses import dataclass, field

from .items import ItemBuilder
from .links import LinkIndex, page_href
from .pages import PageFile, PageKey, PageSet
from .parsed_page import ParsedPage
from .products import LIBRARY_TITLES, Product

MAIN_LIBRARY = "libc"


@dataclass
class Document:
    """One document of a resource file: a header and its items in both formats."""

    header: dict
    full_items: list[dict] = field(default_factory=list)
    lookup_items: list[dict] = field(default_factory=list)


@dataclass
class ResourceFile:
    product: Product
    language: str
    main: Document
    support_packages: dict[str, Document] = field(default_factory=dict)

    def documents(self) -> list[Document]:
        return [self.main, *self.support_packages.values()]


class Assembler:
    def __init__(self, products: list[Product], english: PageSet) -> None:
        self._products = products
        self._english = english
        self._originals: dict[PageKey, ParsedPage] = {}
        self._hrefs: dict[PageKey, str] = {}
        self._links = LinkIndex()
        self.problems: list[str] = []

    def product_of(self, page: PageFile) -> Product | None:
        takers = (product for product in self._products if product.takes(page.section))
        return next((product for product in takers if page.package in product.packages), None)

    def set_originals(self, pages: list[ParsedPage]) -> None:
        """Sets the English pages, to which every later href and link leads."""
        for parsed in pages:
            product = self.product_of(parsed.page)
            href = page_href(product, parsed.page)
            self._originals[parsed.page.key] = parsed
            self._hrefs[parsed.page.key] = href
            self._links.add([parsed.page.name, *parsed.names], parsed.page.section, product, href)
        for name, section in self._english.names():
            page = self._english.resolve((name, section))
            if page is not None and page.key in self._originals:
                self._links.add([name], section, self.product_of(page), self._hrefs[page.key])

    def original_of(self, page: PageFile) -> PageFile | None:
        """The English page that a page translates, even if filed under another subsection."""
        exact = self._english.resolve(page.key)
        if exact is not None:
            return exact
        keys = [
            key
            for key in self._english.pages
            if key[0] == page.name and key[1][0] == page.section[0]
        ]
        return self._english.pages[keys[0]] if len(keys) == 1 else None

    def resource_files(self, pages: list[ParsedPage], language: str) -> list[ResourceFile]:
        """The files of one language; products without any page in it have none."""
        chosen = self._one_page_per_original(pages)
        by_product: dict[str, list[PageKey]] = defaultdict(list)
        for key in sorted(chosen, key=self._hrefs.__getitem__):
            by_product[self.product_of(self._originals[key].page).short_name].append(key)
        return [
            self._resource_file(
                product, language, {key: chosen[key] for key in by_product[product.short_name]}
            )
            for product in self._products
            if by_product[product.short_name]
        ]

    def _one_page_per_original(self, pages: list[ParsedPage]) -> dict[PageKey, ParsedPage]:
        chosen: dict[PageKey, ParsedPage] = {}
        # A page of the original's own name comes before one that was split off or renamed.
        for parsed in sorted(pages, key=lambda parsed: parsed.page.key not in self._originals):
            original = self.original_of(parsed.page)
            if original is None or original.key not in self._originals:
                continue
            if original.key in chosen:
                self.report(parsed, f"a second translation of {'.'.join(original.key)}")
            else:
                chosen[original.key] = parsed
        return chosen

    def _resource_file(
        self, product: Product, language: str, pages: dict[PageKey, ParsedPage]
    ) -> ResourceFile:
        resource = ResourceFile(product, language, Document(_product_header(product, language)))
        titles: dict[str, Counter] = defaultdict(Counter)
        for key, parsed in pages.items():
            original = self._originals[key]
            document = resource.main
            library = _support_library(product, original)
            if library:
                titles[library].update([_library_title(library, parsed, original)])
                document = resource.support_packages.setdefault(library, Document({}))
            builder = ItemBuilder(parsed, original, product, self._hrefs[key])
            self._add_items(document, builder, parsed)
        for name, document in resource.support_packages.items():
            document.header = _support_header(product, name, _most_frequent(titles[name]))
        _sort(resource)
        return resource

    def _add_items(self, document: Document, builder: ItemBuilder, parsed: ParsedPage) -> None:
        item = builder.full_item(self._links, lambda message: self.report(parsed, message))
        document.full_items.append(item)
        document.lookup_items.extend(builder.lookup_records())

    def report(self, parsed: ParsedPage, message: str) -> None:
        self.problems.append(f"{parsed.language}: {'.'.join(parsed.page.key)}: {message}")


def _support_library(product: Product, original: ParsedPage) -> str:
    name = original.library[0] if original.library else MAIN_LIBRARY
    return name if product.splits_libraries and name != MAIN_LIBRARY else ""


def _library_title(library: str, parsed: ParsedPage, original: ParsedPage) -> str:
    if parsed.library and parsed.library[0] == library:
        return parsed.library[1]
    return LIBRARY_TITLES.get(parsed.language, {}).get(library, original.library[1])


def _sort(resource: ResourceFile) -> None:
    """Sorts names and packages; items already come in the order of their hrefs."""
    resource.support_packages = dict(sorted(resource.support_packages.items()))
    for document in resource.documents():
        document.lookup_items.sort(key=lambda record: (record["name"], record["href"]))


def _most_frequent(titles: Counter) -> str:
    return min(titles, key=lambda title: (-titles[title], title))


def _product_header(product: Product, language: str) -> dict:
    return {
        "productName": product.display_name(language),
        "baseCode": product.base_code,
        "helpFolder": product.short_name,
        "helpLocation": product.help_location,
    }


def _support_header(product: Product, library: str, title: str) -> dict:
    return {
        "productName": title or library,
        "baseCode": library,
        "helpFolder": product.short_name,
        "helpLocation": product.help_location,
    }
