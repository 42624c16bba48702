"""The languages of manual pages: one table row each.

A row names the packages that carry the translation, the headings by which the sections are
recognized, and how the language is distinguished from English: by the letters of its script or, for
languages in Latin letters, by frequent words. Its code is also the folder of its pages.
"""

import re
from dataclasses import dataclass, field

HIRAGANA_KATAKANA_HAN = "\u3040-\u30ff\u3400-\u9fff"
HAN = "\u3400-\u9fff"
CYRILLIC = "\u0400-\u04ff"

# Below these shares a page is an English page with a few translated phrases.
SCRIPT_SHARE = 0.08
FREQUENT_WORD_RATIO = 1.0

_CODE_LINES = re.compile(r"^    .*$", re.MULTILINE)


@dataclass(frozen=True)
class Language:
    code: str
    packages: tuple[str, ...]
    headings: dict[str, str] = field(hash=False)  # section kind -> headings, separated by "|"
    script: str = ""
    frequent_words: str = ""

    def section_kinds(self) -> dict[str, str]:
        return {
            heading.casefold(): kind
            for kind, headings in self.headings.items()
            for heading in headings.split("|")
        }


ENGLISH = Language(
    code="en",
    packages=(),
    headings={
        "name": "NAME",
        "library": "LIBRARY",
        "synopsis": "SYNOPSIS|SYNTAX|USAGE",
        "description": "DESCRIPTION",
        "options": "OPTIONS|ARGUMENTS|PARAMETERS|COMMANDS",
        "returns": "RETURN VALUE|RETURN VALUES",
        "exit": "EXIT STATUS|EXIT STATUSES",
        "examples": "EXAMPLES|EXAMPLE",
        "see_also": "SEE ALSO",
        "versions": "VERSIONS|HISTORY|STANDARDS|CONFORMING TO|NOTES",
    },
    frequent_words="the of is to and that for this be by with which",
)

_TRANSLATIONS = (
    Language(
        code="ja",
        packages=("manpages-ja", "manpages-ja-dev"),
        headings={
            "name": "名前|名称",
            "library": "ライブラリ|ライブラリー",
            "synopsis": "書式|形式|構文",
            "description": "説明|解説|書式と説明",
            "options": "オプション|引数|パラメータ|コマンド",
            "returns": "返り値|戻り値",
            "exit": "終了ステータス|終了コード|リターンコード|返り値 (終了ステータス)",
            "examples": "例|使用例|用例",
            "see_also": "関連項目|関連情報",
        },
        script=HIRAGANA_KATAKANA_HAN,
    ),
    Language(
        code="de",
        packages=("manpages-de", "manpages-de-dev"),
        headings={
            "name": "BEZEICHNUNG|NAME",
            "library": "BIBLIOTHEK",
            "synopsis": "ÜBERSICHT|SYNTAX|AUFRUF",
            "description": "BESCHREIBUNG",
            "options": "OPTIONEN|ARGUMENTE|PARAMETER|BEFEHLE",
            "returns": "RÜCKGABEWERT|RÜCKGABEWERTE",
            "exit": "EXIT-STATUS|RÜCKGABESTATUS",
            "examples": "BEISPIELE|BEISPIEL",
            "see_also": "SIEHE AUCH",
        },
        frequent_words="der die das und ist nicht wird ein eine den von zu",
    ),
    Language(
        code="fr",
        packages=("manpages-fr", "manpages-fr-dev"),
        headings={
            "name": "NOM",
            "library": "BIBLIOTHÈQUE",
            "synopsis": "SYNOPSIS|RÉSUMÉ",
            "description": "DESCRIPTION|SYNOPSIS ET DESCRIPTION",
            "options": "OPTIONS|ARGUMENTS|PARAMÈTRES|COMMANDES",
            "returns": "VALEUR RENVOYÉE|VALEURS RENVOYÉES|VALEUR DE RETOUR",
            "exit": "CODE DE RETOUR|CODES DE RETOUR|ÉTAT DE SORTIE",
            "examples": "EXEMPLES|EXEMPLE",
            "see_also": "VOIR AUSSI",
        },
        frequent_words="le la les des est et un une du dans pour pas",
    ),
    Language(
        code="es",
        packages=("manpages-es", "manpages-es-dev"),
        headings={
            "name": "NOMBRE",
            "library": "BIBLIOTECA",
            "synopsis": "SINOPSIS",
            "description": "DESCRIPCIÓN",
            "options": "OPCIONES|ARGUMENTOS|PARÁMETROS",
            "returns": "VALOR DEVUELTO",
            "exit": "ESTADO DE SALIDA",
            "examples": "EJEMPLOS|EJEMPLO",
            "see_also": "VÉASE TAMBIÉN",
        },
        frequent_words="el la los las es de que una del para por se",
    ),
    Language(
        code="it",
        packages=("manpages-it", "manpages-it-dev"),
        headings={
            "name": "NOME",
            "library": "LIBRERIA",
            "synopsis": "SINTASSI",
            "description": "DESCRIZIONE",
            "options": "OPZIONI",
            "returns": "VALORE RESTITUITO",
            "exit": "STATO DI USCITA",
            "examples": "ESEMPI|ESEMPIO",
            "see_also": "VEDERE ANCHE",
        },
        frequent_words="il la le di che una del per non è gli con",
    ),
    Language(
        code="nl",
        packages=("manpages-nl", "manpages-nl-dev"),
        headings={
            "name": "NAAM",
            "library": "BIBLIOTHEEK",
            "synopsis": "SAMENVATTING",
            "description": "BESCHRIJVING",
            "options": "OPTIES",
            "returns": "EIND WAARDE|EINDWAARDE",
            "exit": "EXIT STATUS",
            "examples": "VOORBEELDEN|VOORBEELD",
            "see_also": "ZIE OOK",
        },
        frequent_words="de het een van niet wordt dat en zijn voor met door",
    ),
    Language(
        code="pl",
        packages=("manpages-pl", "manpages-pl-dev"),
        headings={
            "name": "NAZWA",
            "library": "BIBLIOTEKA",
            "synopsis": "SKŁADNIA",
            "description": "OPIS",
            "options": "OPCJE|ARGUMENTY",
            "returns": "WARTOŚĆ ZWRACANA",
            "exit": "KOD ZAKOŃCZENIA",
            "examples": "PRZYKŁADY|PRZYKŁAD",
            "see_also": "ZOBACZ TAKŻE",
        },
        frequent_words="w i jest nie się na do z jeśli lub przez dla",
    ),
    Language(
        code="pt_BR",
        packages=("manpages-pt-br", "manpages-pt-br-dev"),
        headings={
            "name": "NOME",
            "library": "BIBLIOTECA",
            "synopsis": "SINOPSE",
            "description": "DESCRIÇÃO",
            "options": "OPÇÕES|ARGUMENTOS",
            "returns": "VALOR DE RETORNO",
            "exit": "STATUS DE SAÍDA",
            "examples": "EXEMPLOS|EXEMPLO",
            "see_also": "VEJA TAMBÉM",
        },
        frequent_words="o os é de que uma do da para não um se",
    ),
    Language(
        code="ru",
        packages=("manpages-ru", "manpages-ru-dev"),
        headings={
            "name": "ИМЯ",
            "library": "БИБЛИОТЕКА",
            "synopsis": "СИНТАКСИС|ОБЗОР",
            "description": "ОПИСАНИЕ",
            "options": "ПАРАМЕТРЫ|АРГУМЕНТЫ",
            "returns": "ВОЗВРАЩАЕМОЕ ЗНАЧЕНИЕ|ВОЗВРАЩАЕМЫЕ ЗНАЧЕНИЯ",
            "exit": "СТАТУС ВЫХОДА|КОД ВОЗВРАТА",
            "examples": "ПРИМЕРЫ|ПРИМЕР",
            "see_also": "СМ. ТАКЖЕ|СМОТРИТЕ ТАКЖЕ",
        },
        script=CYRILLIC,
    ),
    Language(
        code="uk",
        packages=("manpages-uk", "manpages-uk-dev"),
        headings={
            "name": "НАЗВА",
            "library": "БІБЛІОТЕКА",
            "synopsis": "КОРОТКИЙ ОПИС",
            "description": "ОПИС",
            "options": "ПАРАМЕТРИ",
            "returns": "ПОВЕРНУТЕ ЗНАЧЕННЯ",
            "exit": "СТАН ВИХОДУ",
            "examples": "ПРИКЛАДИ|ПРИКЛАД",
            "see_also": "ДИВ. ТАКОЖ",
        },
        script=CYRILLIC,
    ),
    Language(
        code="zh_CN",
        packages=("manpages-zh",),
        headings={
            "name": "名称|名字",
            "synopsis": "概述|总览|摘要|语法",
            "description": "描述|说明",
            "options": "选项|参数",
            "returns": "返回值",
            "exit": "退出状态",
            "examples": "示例|例子|范例",
            "see_also": "参见|另见|又见",
        },
        script=HAN,
    ),
)

LANGUAGES = {language.code: language for language in (ENGLISH, *_TRANSLATIONS)}


def section_kind(heading: str, language: Language) -> str:
    """The kind of a section, or "" for one that is not used.

    English headings count in every language, and so do headings in both languages.
    """
    kinds = ENGLISH.section_kinds() | language.section_kinds()
    folded = heading.casefold().strip(" :")
    without_ascii = re.sub(r"[\x00-\x7f\uff08\uff09]+", " ", folded).strip()
    ascii_only = re.sub(r"[^ -~]+|[()]", " ", folded).strip()
    return kinds.get(folded) or kinds.get(without_ascii) or kinds.get(ascii_only) or ""


def is_written_in(text: str, language: Language) -> bool:
    """Whether the running text, code and tables apart, is in the language rather than English."""
    text = _CODE_LINES.sub("", text)
    if language.script:
        letters = sum(character.isalpha() for character in text)
        native = len(re.findall(f"[{language.script}]", text))
        return native > 0 and native >= SCRIPT_SHARE * letters
    words = re.findall(r"[^\W\d_]+", text.casefold())
    own, english = (
        sum(word in row.frequent_words.split() for word in words) for row in (language, ENGLISH)
    )
    return own > FREQUENT_WORD_RATIO * english
