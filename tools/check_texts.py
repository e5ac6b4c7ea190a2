#!/usr/bin/env python3
"""Finds texts of the interface that no translation reaches: literals that read like a text outside core::tr().

fixed_texts.txt lists the texts that stay as they are in every language, and what only looks like one.

usage: check_texts.py [folder]   (default: the checkout this script lies in)
"""
import re
import sys
from pathlib import Path

TOPS = ("platform", "host", "magazzino")
# Prints, stored rows, files of other programs' formats, demonstration data, chapters of the manual.
WITHOUT_TEXTS = ("platform/core/Log.cpp", "platform/data/firebird/", "platform/data/OdbcDriver", "host/schema/Demo", "host/schema/HostTables", "host/DocumentOptions.h", "host/help/HostChapters",
                 "host/FirmFields.cpp", "host/transfer/ImportTarget.cpp", "magazzino/schema/Tables",
                 "magazzino/schema/InitialRows", "magazzino/fatturapa/Scrittura", "magazzino/fatturapa/Testi",
                 "magazzino/fatturapa/Leggibile", "magazzino/fatturapa/Registro.h", "host/InvoiceCodes.cpp")
# What stands before a literal that goes to the log, names something, or is compared.
NO_TEXT_AFTER = re.compile(r"\b(logError|logLine|logFailure|swallowing|QRegularExpression(\s+\w+)?|QKeySequence|setStyleSheet|"
                           r"contains|startsWith|replace|value|property|toString|key|matches)\(\s*$")
SQL = re.compile(r"\b(SELECT|FROM|WHERE|INSERT|UPDATE|DELETE|ALTER|CREATE|ORDER BY|UNION|COALESCE|CAST|VARCHAR|CONTAINING|"
                 r"LIKE|DECIMAL|INTEGER|TIMESTAMP|BLOB|NOT NULL|UNIQUE|PRIMARY KEY|TYPE OF|STARTING WITH|CONSTRAINT|"
                 r"EXECUTE|PAGE_SIZE)\b|UPPER\(| (AND|OR|IS|IN|BETWEEN|AS) |[<>]?= ?(:ID)?$")
# Two words, or a letter that only a text has.
SENTENCE = re.compile(r"[A-Za-zÀ-ÿ,.:;!?)\"] +[A-Za-zÀ-ÿ(\"%«]|[À-ÿ…]")
TOKEN = re.compile(r"//[^\n]*|/\*.*?\*/|u?R\"(\w*)\(.*?\)\1\"|'(?:\\.|[^'\\\n])+'|"
                   r"(?P<text>u?\"(?:\\.|[^\"\\\n])*\"(?:_s)?(?:\s*u?\"(?:\\.|[^\"\\\n])*\"(?:_s)?)*)", re.S)
PART = re.compile(r"\"((?:\\.|[^\"\\\n])*)\"")


def fixed_texts(root):
    lines = (root / "tools/fixed_texts.txt").read_text(encoding="utf-8").splitlines()
    return {line for line in lines if not line.startswith("#")}


def literals(source):
    """(start, text) of each literal that makes a QString."""
    for found in TOKEN.finditer(source):
        literal = found.group("text")
        if not literal:
            continue
        is_string = literal.endswith("_s") or source[:found.start()].rstrip().endswith("QStringLiteral(")
        if is_string:
            yield found.start(), "".join(PART.findall(literal))


def words_of(text):
    """What is left without placeholders, escapes and markup."""
    return re.sub(r"%\d|\\n|\\r|<[^>]*>", " ", text).replace('\\"', '"').strip()


def is_text(text, before):
    words = words_of(text)
    reads = SENTENCE.search(words) and re.search("[a-zà-ÿ]{2}|…", words)
    return bool(reads) and not SQL.search(text) and not NO_TEXT_AFTER.search(before)


def untranslated(root):
    fixed = fixed_texts(root)
    for top in TOPS:
        for file in sorted((root / top).rglob("*")):
            path = file.relative_to(root).as_posix()
            if file.suffix not in (".h", ".cpp") or path.startswith(WITHOUT_TEXTS):
                continue
            source = file.read_text(encoding="utf-8")
            for start, text in literals(source):
                if text.strip() not in fixed and is_text(text, source[max(0, start - 60):start]):
                    line = source.count("\n", 0, start) + 1
                    yield f'{path}:{line}: "{text}" belongs into core::tr(), or into tools/fixed_texts.txt'


# Before main() no translation is there: what such a constant takes would stay Italian for ever.
CONSTANT = re.compile(r"(static |inline )*const(expr)? [^(]+ = ?")


def too_early(root):
    for top in TOPS:
        for file in sorted((root / top).rglob("*.[hc]*")):
            declaration = ""
            for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
                if line[:1].isalpha():
                    declaration = line
                if "core::tr(" in line and CONSTANT.match(declaration):
                    yield f"{file.relative_to(root).as_posix()}:{number}: core::tr() in a constant runs before main()"


def main():
    root = Path(sys.argv[1] if len(sys.argv) > 1 else Path(__file__).resolve().parent.parent)
    found = [*untranslated(root), *too_early(root)]
    print("\n".join(found), end="\n" if found else "")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
