#!/usr/bin/env python3
"""Counts the public functions of the headers that say nothing about themselves.

usage: count_docs.py [-l] [folder...]   (default: platform host magazzino; -l lists them)

A function is documented by a "///" comment above it or a "///<" one behind it. Overloads that follow one another share a
comment, and so do the functions between "///@{" and "///@}" below it. Not counted are destructors, deleted and defaulted
functions, overrides, which the base documents, and constructors that take nothing but an owner, of which their class's
comment says all there is.
"""
import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
ACCESS = re.compile(r"^(public|protected|private|Q_SIGNALS|signals)(\s+Q_SLOTS|\s+slots)?\s*:(?!:)")
SCOPE = re.compile(r"^(?:template\s*<.*>\s*)?(namespace|class|struct|enum|union)\b")
IGNORED = re.compile(r"^(using|friend|typedef|static_assert|extern|Q_[A-Z_]+|namespace\b.*=)")
OWNED = re.compile(r"^(explicit\s+)?\w+\s*\((Q\w+ \*\w+(\s*=\s*nullptr)?)?\)")
BODY = re.compile(r"\)[\s\w]*$")
NAME = re.compile(r"(~?\w+|operator\s*(?:\(\)|\[\]|[^\s\w(]+|\w+))\s*\(")


def without_templates(text):
    text = text.replace("->", "  ")
    while True:
        shorter = re.sub(r"<[^<>]*>", "", text)
        if shorter == text:
            return text
        text = shorter


def function_name(statement):
    """The name that a declaration gives to a function; None when it declares something else or needs no comment."""
    if IGNORED.match(statement):
        return None
    plain = without_templates(statement)
    found = NAME.search(plain)
    if not found or "=" in plain[:found.start()]:
        return None
    name = found.group(1)
    if name.startswith("~") or re.search(r"\boverride\b|=\s*(delete|default)\s*$", plain):
        return None
    return name


class Header:
    """Reads one header's declarations in order; `functions` gets (line, name, documented) of each public function."""

    def __init__(self, text):
        self.text = text.replace("Q_OBJECT\n", "\n")
        self.position = 0
        self.line = 1
        self.functions = []
        self.scopes = []  # "public" or "private" for each open class or namespace
        self.classes = []  # for each of them, whether a comment stands above it
        self.documented = False
        self.group = False
        self.read()

    def visible(self):
        return all(access == "public" for access in self.scopes)

    def take(self, count):
        part = self.text[self.position:self.position + count]
        self.line += part.count("\n")
        self.position += count
        return part

    def skip_block(self):
        depth = 0
        while self.position < len(self.text):
            character = self.take(1)
            depth += (character == "{") - (character == "}")
            if depth == 0:
                return

    def comment(self, statement):
        end = self.text.find("\n", self.position)
        text = self.take(end - self.position)
        if text.startswith("///@"):
            self.group = text.startswith("///@{")
        elif text.startswith("///<"):
            if self.functions and not statement:
                self.functions[-1][2] = True
        elif text.startswith("///") and not statement:
            self.documented = True

    def declared(self, statement, line):
        name = function_name(statement)
        owned = OWNED.match(statement) and self.classes and self.classes[-1]
        if name and self.visible() and not owned:
            follows = bool(self.functions) and self.functions[-1][1] == name and self.functions[-1][2]
            self.functions.append([line, name, self.documented or self.group or follows])
        self.documented = False

    def opened(self, statement, line):
        """Before a "{": a scope, a function's body or a value."""
        scope = SCOPE.match(statement)
        if scope and scope.group(1) != "enum" and "(" not in without_templates(statement):
            self.take(1)
            anonymous = statement == "namespace"
            self.classes.append(self.documented)
            self.scopes.append("private" if scope.group(1) == "class" or anonymous else "public")
            self.documented = False
            return ""
        self.skip_block()
        if scope or not BODY.search(statement):
            return statement + " {}"
        self.declared(statement, line)
        return ""

    def read(self):
        statement, first, parentheses = "", 0, 0
        while self.position < len(self.text):
            rest = self.text[self.position:self.position + 2]
            if rest == "//":
                self.comment(statement)
                continue
            if rest[0] == "#" and not statement:
                self.take(max(1, self.text.find("\n", self.position) - self.position))
                continue
            if rest == "\n\n" and not statement:
                self.documented = False
            if rest[0] == "{" and parentheses == 0:
                statement = self.opened(statement.strip(), first)
                continue
            character = self.take(1)
            parentheses += (character == "(") - (character == ")")
            if character == ";" and parentheses == 0:
                self.declared(statement.strip(), first)
                statement = ""
            elif character == "}" and parentheses == 0:
                if self.scopes:
                    self.scopes.pop()
                    self.classes.pop()
                statement = ""
            elif statement or not character.isspace():
                first = first if statement else self.line
                statement += " " if character.isspace() else character
                access = ACCESS.match(statement)
                if access and not self.text[self.position:].startswith(":"):
                    self.scopes[-1] = "public" if access.group(1) in ("public", "Q_SIGNALS", "signals") else "private"
                    statement = ""


def main():
    arguments = [argument for argument in sys.argv[1:] if argument != "-l"]
    total, silent = 0, 0
    for folder in arguments or ("platform", "host", "magazzino"):
        for file in sorted((ROOT / folder).rglob("*.h")):
            for line, name, documented in Header(file.read_text(encoding="utf-8")).functions:
                total += 1
                silent += not documented
                if not documented and "-l" in sys.argv:
                    print(f"{file.relative_to(ROOT)}:{line}: {name}")
    print(f"{silent} of {total} public functions without a comment ({100 * silent // max(total, 1)} %)")


if __name__ == "__main__":
    main()
