#!/usr/bin/env python3
"""Fails when a file includes what its layer may not see, or calls what belongs to one layer alone.

usage: check_layers.py [folder]   (default: the checkout this script lies in)
"""
import re
import sys
from pathlib import Path

# Layer (path prefix, the longest one that fits counts) -> own folders it may include, Qt modules it may use.
LAYERS = {
    "platform/core": (["platform/core"], ["Core"]),
    "platform/data": (["platform/core", "platform/data"], ["Core", "Sql"]),
    "platform/report": (["platform/core", "platform/data", "platform/report"], ["Core", "Gui", "Widgets", "PrintSupport"]),
    "platform/ui": (["platform"], ["Core", "Gui", "Widgets", "PrintSupport"]),
    "host/schema": (["platform/core", "platform/data", "host/schema"], ["Core"]),
    "host": (["platform", "host"], ["Core", "Gui", "Widgets", "PrintSupport"]),
    "magazzino/MMGUtils": (["platform/core", "platform/data", "host/IntfPack.h", "host/Corvane3Impl.h",
                            "host/users/Users.h", "magazzino/MMGUtils", "magazzino/schema"], ["Core"]),
    "magazzino/schema": (["platform/core", "platform/data", "host/IntfPack.h", "host/Corvane3Impl.h",
                          "magazzino/MMGUtils", "magazzino/schema"], ["Core"]),
    "magazzino": (["platform", "host", "magazzino"], ["Core", "Gui", "Widgets", "PrintSupport"]),
}

# Pattern in the code, the prefixes where it is allowed, what to say.
RESERVED = [
    (re.compile(r"#\s*include\s*<QSql"), ["platform"], "database headers belong to platform"),
    (re.compile(r"\bQMessageBox::"), ["platform", "host/ui"], "message boxes go through platform/core/Messages.h"),
    (re.compile(r"\bQFileDialog::"), ["platform", "host/ui"], "file dialogs go through their seam"),
]

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')
QT_FOLDER = re.compile(r"^Qt(Core|Gui|Widgets|Sql|PrintSupport|Test)/")
FORMS = "magazzino/forms/"


def qt_modules(include_root=None):
    """Class header -> Qt module, from the installed headers (a header unknown here is not judged)."""
    roots = [include_root] if include_root else sorted(Path("/usr/include").glob("*/qt6")) + [Path("/usr/include/qt6")]
    modules = {}
    for root in roots:
        for module in ("Core", "Gui", "Widgets", "Sql", "PrintSupport"):
            for header in (root / f"Qt{module}").glob("Q*"):
                modules[header.name] = module
    return modules


def layer_of(path):
    fitting = [layer for layer in LAYERS if path.startswith(layer)]
    return max(fitting, key=len) if fitting else None


def include_breach(path, bracket, target, modules):
    layer = layer_of(path)
    if layer is None:
        return None
    folders, allowed_modules = LAYERS[layer]
    if bracket == '"' and "/" in target:
        if not any(target.startswith(folder) for folder in folders):
            return f"{layer} may not include {target}"
        if path.startswith(FORMS) and target.startswith(FORMS) and Path(target).stem != Path(path).stem:
            return f"a form may not know another form's header ({target})"
    elif bracket == "<":
        named = QT_FOLDER.match(target)
        module = named.group(1) if named else modules.get(target)
        if module and module not in allowed_modules:
            return f"{layer} may not use <{target}> of Qt{module}"
    return None


def breaches(root):
    modules = qt_modules()
    for top in ("platform", "host", "magazzino"):
        for file in sorted((root / top).rglob("*")):
            if file.suffix not in (".h", ".cpp") or file.name == "pch.h":
                continue
            path = file.relative_to(root).as_posix()
            for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
                found = INCLUDE.match(line)
                text = include_breach(path, *found.groups(), modules) if found else None
                for pattern, allowed, reason in RESERVED:
                    if pattern.search(line) and not any(path.startswith(prefix) for prefix in allowed):
                        text = text or reason
                if text:
                    yield f"{path}:{number}: {text}"


def main():
    root = Path(sys.argv[1] if len(sys.argv) > 1 else Path(__file__).resolve().parent.parent)
    found = list(breaches(root))
    print("\n".join(found), end="\n" if found else "")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
