"""A whole run: packages to pages, pages to documents, documents to a documentation root."""

import shutil
import signal
import sys
import tempfile
from collections.abc import Iterable, Iterator
from concurrent.futures import BrokenExecutor, ProcessPoolExecutor
from contextlib import contextmanager
from dataclasses import dataclass, field
from pathlib import Path

from .assembly import Assembler, ResourceFile
from .check import check_root
from .errors import CorpusError
from .languages import LANGUAGES
from .mandoc import BrokenPage
from .output import stem, write_root
from .packages import Package, obtain_packages
from .pages import PageFile, PageSet
from .parsed_page import ParsedPage, parse_page
from .products import Product
from .stamp import STAMP_NAME, fingerprint, stamped_summary, write_stamp

Task = tuple[PageFile, str]
_PAGES_PER_CHUNK = 8


@dataclass
class Options:
    output: Path
    packages: Path
    languages: list[str]  # without English, which is always there
    products: list[Product]
    jobs: int
    quiet: bool = False


@dataclass
class Outcome:
    summary: list[str]
    problems: list[str] = field(default_factory=list)
    up_to_date: bool = False


def build(options: Options) -> Outcome:
    _refuse_foreign_folder(options.output)
    packages = obtain_packages(_package_names(options), options.packages)
    digest = fingerprint(packages.values(), _stamped_options(options))
    summary = stamped_summary(options.output, digest)
    if summary is not None:
        return Outcome(summary, up_to_date=True)
    files, problems = _resource_files(options, packages)
    outcome = Outcome(_summary(files, len(problems)), problems)
    with _replaced_folder(options.output) as root:
        write_root(root, options.products, files)
        _require_sound(root)
        write_stamp(root, digest, outcome.summary)
    return outcome


def _refuse_foreign_folder(output: Path) -> None:
    """Protects a folder that this program did not write from being replaced."""
    if output.exists() and not (output / STAMP_NAME).exists():
        if not output.is_dir() or any(output.iterdir()):
            raise CorpusError(
                f"{output} exists and is not a documentation root of this program; remove it first"
            )


def _package_names(options: Options) -> list[str]:
    names = [name for product in options.products for name in product.packages]
    names += [name for code in options.languages for name in LANGUAGES[code].packages]
    return list(dict.fromkeys(names))


def _stamped_options(options: Options) -> dict:
    products = [product.short_name for product in options.products]
    return {"languages": options.languages, "products": products}


def _resource_files(
    options: Options, packages: dict[str, Package]
) -> tuple[list[ResourceFile], list[str]]:
    english = _page_set(packages, [name for p in options.products for name in p.packages], "")
    assembler = Assembler(options.products, english)
    tasks: list[Task] = [
        (page, "en") for page in english.pages.values() if assembler.product_of(page)
    ]
    problems = list(english.problems)
    for code in options.languages:
        translated = _page_set(packages, LANGUAGES[code].packages, code)
        pages = [page for page in translated.pages.values() if assembler.original_of(page)]
        tasks += [
            (page, code) for page in pages if assembler.product_of(assembler.original_of(page))
        ]
        problems += [f"{code}: {problem}" for problem in translated.problems]
    parsed, broken = _parse_all(tasks, options)
    problems += broken
    assembler.set_originals(parsed["en"])
    files = [file for code in parsed for file in assembler.resource_files(parsed[code], code)]
    return files, sorted(problems + assembler.problems)


def _page_set(packages: dict[str, Package], names: Iterable[str], man_folder: str) -> PageSet:
    pages = PageSet()
    for name in dict.fromkeys(names):
        pages.add_package(packages[name], man_folder)
    pages.report_broken_aliases()
    return pages


def _parse_all(
    tasks: list[Task], options: Options
) -> tuple[dict[str, list[ParsedPage]], list[str]]:
    """The pages by language, and a line for each that cannot be used."""
    parsed: dict[str, list[ParsedPage]] = {code: [] for code in ("en", *options.languages)}
    broken: list[str] = []
    for done, ((page, code), result) in enumerate(_parse_results(tasks, options.jobs), start=1):
        if isinstance(result, str):
            broken.append(f"{code}: {'.'.join(page.key)}: {result}")
        else:
            parsed[code].append(result)
        _show_progress(done, len(tasks), options.quiet)
    return parsed, broken


def _parse_results(tasks: list[Task], jobs: int) -> Iterator[tuple[Task, ParsedPage | str]]:
    executor = ProcessPoolExecutor(jobs, initializer=_leave_signals_to_parent)
    try:
        yield from zip(tasks, executor.map(_parse_task, tasks, chunksize=_PAGES_PER_CHUNK))
    except BrokenExecutor as error:
        raise CorpusError("a process that reads pages has died") from error
    finally:
        executor.shutdown(cancel_futures=True)


def _leave_signals_to_parent() -> None:
    signal.signal(signal.SIGINT, signal.SIG_IGN)
    signal.signal(signal.SIGTERM, signal.SIG_DFL)


def _parse_task(task: Task) -> ParsedPage | str:
    """The page, or why it is left out; no page may end the run."""
    page, code = task
    try:
        parsed = parse_page(page, code)
    except BrokenPage as error:
        return str(error)
    except Exception as error:  # noqa: BLE001
        return f"cannot be read: {error!r}"
    return parsed if code == "en" or parsed.in_own_language else "not really translated"


def _show_progress(done: int, total: int, quiet: bool) -> None:
    if not quiet and sys.stderr.isatty() and (done % 20 == 0 or done == total):
        end = "\n" if done == total else ""
        print(f"\r{done} of {total} pages", end=end, file=sys.stderr, flush=True)


def _summary(files: list[ResourceFile], problem_count: int) -> list[str]:
    lines = [f"{'file':<16}{'pages':>8}{'records':>9}  support packages"]
    for file in files:
        pages = sum(len(document.full_items) for document in file.documents())
        records = sum(len(document.lookup_items) for document in file.documents())
        packages = " ".join(file.support_packages)
        lines.append(f"{stem(file):<16}{pages:>8}{records:>9}  {packages}".rstrip())
    return [*lines, f"{problem_count} pages or arguments reported and left out"]


@contextmanager
def _replaced_folder(target: Path):
    """A new folder that replaces the target if everything succeeds, and vanishes otherwise."""
    target.parent.mkdir(parents=True, exist_ok=True)
    scratch = Path(tempfile.mkdtemp(prefix=f".{target.name}-", dir=target.parent))
    try:
        fresh = scratch / "new"
        fresh.mkdir()
        yield fresh
        if target.exists():
            target.rename(scratch / "old")
        fresh.rename(target)
    finally:
        shutil.rmtree(scratch, ignore_errors=True)


def _require_sound(root: Path) -> None:
    faults = check_root(root)
    if faults:
        shown = "\n".join(faults[:20])
        raise CorpusError(f"the documentation root has {len(faults)} faults, nothing is written:\n{shown}")
