"""Links between items: the href of each page, and the pages that a reference may mean."""

from collections import defaultdict
from collections.abc import Iterable
from urllib.parse import quote

from .pages import PageFile
from .products import Product


def page_href(product: Product, page: PageFile) -> str:
    return f"{product.short_name}/{quote(page.name, safe=':+,@=')}.{page.section}.html"


class LinkIndex:
    """Finds the item that a name, with or without a section, refers to."""

    def __init__(self) -> None:
        self._targets: dict[str, list[tuple[str, str, str]]] = defaultdict(list)

    def add(self, names: Iterable[str], section: str, product: Product, href: str) -> None:
        for name in names:
            target = (section, product.short_name, href)
            if target not in self._targets[name]:
                self._targets[name].append(target)

    def find(self, name: str, section: str, product: Product) -> str | None:
        """The href meant by a page of `product`; its own pages and the exact section come first.

        A name without a section is only looked for among the product's own pages.
        """
        candidates = [
            (target_section != section, owner != product.short_name, target_section, href)
            for target_section, owner, href in self._targets.get(name, ())
            if target_section.startswith(section) and (section or owner == product.short_name)
        ]
        if any(not foreign for _, foreign, _, _ in candidates):
            candidates = [candidate for candidate in candidates if not candidate[1]]
        return min(candidates)[3] if candidates else None
