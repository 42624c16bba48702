"""The command line."""

import argparse
import os
import signal
import sys
from pathlib import Path

from .build import Options, Outcome, build
from .check import check_root
from .errors import CorpusError
from .languages import LANGUAGES
from .products import PRODUCTS

_FAILURE = 1
_INTERRUPTED = 130


def main(arguments: list[str] | None = None) -> int:
    parser = _parser()
    parsed = parser.parse_args(arguments)
    signal.signal(signal.SIGTERM, _end_on_signal)
    try:
        if parsed.check:
            return _check(parsed.output)
        outcome = build(_options(parsed))
        _report(outcome, parsed)
    except (CorpusError, OSError) as error:
        print(f"{parser.prog}: {error}", file=sys.stderr)
        return _FAILURE
    except KeyboardInterrupt:
        print(f"{parser.prog}: interrupted, nothing is written", file=sys.stderr)
        return _INTERRUPTED
    return 0


def _parser() -> argparse.ArgumentParser:
    languages = ",".join(code for code in LANGUAGES if code != "en")
    products = ",".join(product.short_name for product in PRODUCTS)
    parser = argparse.ArgumentParser(
        prog="build_corpus",
        description="Makes a documentation root from the manual pages of Debian packages. "
        "Packages whose pages are not on this system are downloaded with apt-get and unpacked, "
        "without being installed. A root that is up to date is left as it is.",
    )
    parser.add_argument("--output", type=Path, required=True, metavar="DIR", help="the root")
    parser.add_argument(
        "--check", action="store_true", help="only check the existing root"
    )
    _add_content_options(parser, languages, products)
    _add_run_options(parser)
    return parser


def _add_content_options(parser: argparse.ArgumentParser, languages: str, products: str) -> None:
    parser.add_argument(
        "--packages",
        type=Path,
        metavar="DIR",
        help="where packages are downloaded and unpacked (default: 'packages' beside DIR)",
    )
    parser.add_argument(
        "--languages",
        type=_codes("language", languages),
        default=["ja", "de", "fr"],
        metavar="LIST",
        help=f"languages beside English (default: ja,de,fr; known: {languages})",
    )
    parser.add_argument(
        "--products",
        type=_codes("product", products),
        default=products.split(","),
        metavar="LIST",
        help=f"products to document (default: all; known: {products})",
    )


def _add_run_options(parser: argparse.ArgumentParser) -> None:
    parser.add_argument(
        "--jobs",
        type=_positive,
        default=os.cpu_count() or 1,
        metavar="N",
        help="pages read at the same time (default: one for each processor)",
    )
    parser.add_argument("--quiet", action="store_true", help="no progress, no summary")
    parser.add_argument(
        "--report",
        type=Path,
        metavar="FILE",
        help="where to list what is left out, one line each (default: standard error)",
    )


def _codes(what: str, known: str):
    """A parser for comma-separated names out of a known set."""

    def parse(text: str) -> list[str]:
        codes = [code for code in text.split(",") if code]
        unknown = [code for code in codes if code not in known.split(",")]
        if unknown:
            raise argparse.ArgumentTypeError(f"unknown {what} {unknown[0]!r}; known: {known}")
        return list(dict.fromkeys(codes))

    return parse


def _positive(text: str) -> int:
    number = int(text) if text.isdecimal() else 0
    if number < 1:
        raise argparse.ArgumentTypeError(f"{text!r} is not a positive number")
    return number


def _options(parsed: argparse.Namespace) -> Options:
    output = parsed.output.absolute()
    products = [product for product in PRODUCTS if product.short_name in parsed.products]
    if not products:
        raise CorpusError("no products given")
    packages = (parsed.packages or output.parent / "packages").absolute()
    return Options(output, packages, parsed.languages, products, parsed.jobs, parsed.quiet)


def _report(outcome: Outcome, parsed: argparse.Namespace) -> None:
    if not outcome.up_to_date:
        lines = "".join(f"{problem}\n" for problem in outcome.problems)
        if parsed.report:
            parsed.report.write_text(lines, encoding="utf-8")
        else:
            sys.stderr.write(lines)
    if not parsed.quiet:
        print("\n".join(outcome.summary))
        if outcome.up_to_date:
            print("nothing has changed; the documentation root is up to date")


def _check(root: Path) -> int:
    faults = check_root(root)
    print("\n".join(faults) or f"{root}: sound")
    return _FAILURE if faults else 0


def _end_on_signal(number: int, frame: object) -> None:
    raise KeyboardInterrupt
