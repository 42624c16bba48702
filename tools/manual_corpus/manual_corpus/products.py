"""The products of the corpus: which packages and sections they take, and into which files."""

import re
from dataclasses import dataclass, field
from enum import Enum


class LookupPackaging(Enum):
    PLAIN = "plain"  # stem.json, stem_LL.json
    ONE_ZIP = "one zip"  # stem.zip with an entry per language
    ZIP_PER_LANGUAGE = "zip per language"  # stem.zip, stem_LL.zip with one entry each


@dataclass(frozen=True)
class Product:
    short_name: str
    base_code: str
    alt_short_name: str
    packages: tuple[str, ...]
    sections: str  # regular expression over whole section names
    display_names: dict[str, str] = field(hash=False)
    packaging: LookupPackaging = LookupPackaging.PLAIN
    installed: bool = True
    splits_libraries: bool = False  # pages of other libraries go to support-package documents

    def takes(self, section: str) -> bool:
        return re.fullmatch(self.sections, section) is not None

    def display_name(self, language: str) -> str:
        return self.display_names.get(language, self.display_names["en"])

    @property
    def help_location(self) -> str:
        return f"help/{self.short_name}"


_MAN_PAGES = ("manpages-dev", "manpages")

PRODUCTS = (
    Product(
        short_name="syscalls",
        base_code="SC",
        alt_short_name="man2",
        packages=_MAN_PAGES,
        sections=r"2\w*",
        display_names={
            "en": "Linux System Calls",
            "ja": "Linux システムコール",
            "de": "Linux-Systemaufrufe",
            "fr": "Appels système Linux",
            "es": "Llamadas al sistema de Linux",
            "ru": "Системные вызовы Linux",
        },
    ),
    Product(
        short_name="libc",
        base_code="LC",
        alt_short_name="man3",
        packages=_MAN_PAGES,
        sections=r"3\w*",
        display_names={
            "en": "C Library",
            "ja": "C ライブラリ",
            "de": "C-Bibliothek",
            "fr": "Bibliothèque C",
            "es": "Biblioteca de C",
            "ru": "Библиотека C",
        },
        splits_libraries=True,
    ),
    Product(
        short_name="commands",
        base_code="CM",
        alt_short_name="man1",
        packages=(
            "coreutils",
            "bash",
            "findutils",
            "grep",
            "gzip",
            "sed",
            "tar",
            "util-linux",
        ),
        sections=r"[18]",
        display_names={
            "en": "Commands",
            "ja": "コマンド",
            "de": "Befehle",
            "fr": "Commandes",
            "es": "Órdenes",
            "ru": "Команды",
        },
        packaging=LookupPackaging.ZIP_PER_LANGUAGE,
    ),
    Product(
        short_name="formats",
        base_code="FF",
        alt_short_name="man5",
        packages=("manpages", "manpages-dev"),
        sections=r"[457]",
        display_names={
            "en": "File Formats, Devices and Conventions",
            "ja": "ファイル形式、デバイス、規約",
            "de": "Dateiformate, Geräte und Konventionen",
            "fr": "Formats de fichier, périphériques et conventions",
            "es": "Formatos de fichero, dispositivos y convenciones",
            "ru": "Форматы файлов, устройства и соглашения",
        },
        packaging=LookupPackaging.ONE_ZIP,
    ),
    Product(
        short_name="perl",
        base_code="PL",
        alt_short_name="perldoc",
        packages=("perl-doc",),
        sections=r"1|3perl",
        display_names={"en": "Perl"},
    ),
    Product(
        short_name="openssl",
        base_code="OS",
        alt_short_name="man3ssl",
        packages=("libssl-doc",),
        sections=r"3ssl|7ssl",
        display_names={"en": "OpenSSL"},
        installed=False,
    ),
)

# For languages whose pages do not state the library; others take its title from their pages.
LIBRARY_TITLES = {
    "ja": {
        "libanl": "非同期名前解決ライブラリ",
        "libcrypto": "暗号化・復号ライブラリ",
        "libdl": "動的リンクライブラリ",
        "libm": "数学ライブラリ",
        "libpthread": "POSIX スレッドライブラリ",
        "libresolv": "リゾルバーライブラリ",
        "librt": "リアルタイムライブラリ",
        "libutil": "システムユーティリティライブラリ",
    },
}

# The one support package that is documented but has no folder under supportPackages.
SUPPORT_PACKAGE_NOT_INSTALLED = "librt"

# Entity type and function type by section; the longest matching start of the section counts.
_ENTITIES = {
    "1": ("command", None),
    "2": ("function", "systemcall"),
    "2type": ("type", None),
    "3": ("function", "function"),
    "3const": ("macro", "macro"),
    "3head": ("namespace", None),
    "3perl": ("namespace", None),
    "3type": ("type", None),
    "4": ("object", None),
    "5": ("format", None),
    "8": ("tool", None),
}
_PERL_DOCUMENTS = "unknown"


def entity_types(product: Product, section: str, name: str) -> tuple[str, str | None]:
    """Entity type and function type of a documented name."""
    if product.short_name == "perl" and section == "1":
        return (_PERL_DOCUMENTS, None)
    starts = [start for start in _ENTITIES if section.startswith(start)]
    entity, function = _ENTITIES[max(starts, key=len)] if starts else ("unknown", None)
    if section == "3" and re.fullmatch(r"_?[A-Z][A-Z0-9_]+", name):
        return ("macro", "macro")
    return (entity, function)


def syntax_type(section: str) -> str:
    if section[:1] in "23" and section != "3perl":
        return "function"
    return "command" if section[:1] in "18" else "plain"
