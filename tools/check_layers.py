#!/usr/bin/env python3
"""Fails when a file includes what its layer may not see, calls what belongs to one layer alone, or has texts that no
translation reaches (check_texts.py).

usage: check_layers.py [folder]   (default: the checkout this script lies in)
"""
import re
import sys
from pathlib import Path

from check_texts import too_early, untranslated

# What a module may know of the host: the package interface, the suite's routines, users and rights, what it adds to
# import and demonstration data; its forms the shared categories and the fields of firms besides.
HOST_SERVICES = ["host/IntfPack.h", "host/StartOffers.h", "host/Corvane3Impl.h", "host/users/Users.h", "host/transfer/ImportTarget.h",
                 "host/schema/DemoRows.h", "host/FirmFields.h", "host/DocumentOptions.h", "host/Barcodes.h"]
HOST_API = [*HOST_SERVICES, "host/ArticleStock.h", "host/Categories.h", "host/HostForms.h", "host/registers/FirmGroups.h"]
# What works the program's windows; it knows no module, so that the guided tour can use it, too.
DRIVER = ["tests/support/Controls", "tests/support/QtWarnings", "tests/support/ScriptedDialogs",
          "tests/support/ScriptedMessages"]
WIDGETS = ["Core", "Gui", "Widgets", "PrintSupport"]
TESTS = WIDGETS + ["Test"]

# Layer (path prefix, the longest one that fits counts) -> own files it may include (prefixes), Qt modules it may use.
LAYERS = {
    "platform/core": (["platform/core"], ["Core"]),
    "platform/data": (["platform/core", "platform/data"], ["Core", "Sql"]),
    "platform/schema": (["platform/core", "platform/data", "platform/schema"], ["Core"]),
    "platform/report": (["platform/core", "platform/data", "platform/report"], WIDGETS),
    "platform/ui": (["platform"], WIDGETS),
    "host/schema": (["platform/core", "platform/data", "platform/schema", "host/schema", "host/TaxCodes."], ["Core"]),
    "host": (["platform", "host"], WIDGETS),
    # What the desktop tells all its programs.
    "host/DesktopScheme.": (["platform", "host/DesktopScheme."], ["Core", "DBus"]),
    "tests/host/test_desktop_scheme.": (["platform", "host", "tests/support"], TESTS + ["DBus"]),
    "host/users/Password.": (["platform/core", "host/users/Password."], ["Core", "Network"]),
    "magazzino/MMGUtils": (["platform/core", "platform/data", "platform/schema", *HOST_SERVICES, "magazzino/MMGUtils",
                            "magazzino/documents", "magazzino/schema"], ["Core"]),
    "magazzino/documents": (["platform/core", "platform/data", *HOST_SERVICES, "magazzino/MMGUtils",
                             "magazzino/documents"], ["Core"]),
    "magazzino/schema": (["platform/core", "platform/data", "platform/schema", *HOST_SERVICES, "magazzino/MMGUtils",
                          "magazzino/documents", "magazzino/schema"], ["Core"]),
    "magazzino": (["platform", *HOST_API, "magazzino"], WIDGETS),
    # A pure function of what is stored; its units on the database know no window.
    "magazzino/fatturapa": (["platform/core", "host/InvoiceCodes.h", "host/TaxCodes.h", "magazzino/fatturapa"], ["Core"]),
    "magazzino/fatturapa/Lettura.": (["platform/core", "platform/data", "magazzino/MMGUtils.h", "magazzino/fatturapa"],
                                     ["Core"]),
    **{f"magazzino/fatturapa/{unit}.": (["platform/core", "platform/data", "magazzino/documents/DocumentKind.h",
                                         "magazzino/fatturapa"], ["Core"])
       for unit in ("Registro", "Ricevute", "Leggibile")},
    "tour": (["platform", "host", "tour", *DRIVER], WIDGETS),
    "tests/platform": (["platform", "tests/support", "tests/platform"], TESTS),
    "tests": (["platform", "host", "magazzino", "tests", "benchmark/BenchData.h"], TESTS),
    **{unit: (["platform", *DRIVER], TESTS) for unit in DRIVER},
    "benchmark/BenchData": (["platform", "host", "benchmark/BenchData"], ["Core"]),
    # The least work that gives the same result is done with the database driver alone.
    "benchmark/Bare": (["platform/core", "platform/data", "benchmark/Bare"], ["Core", "Sql"]),
    "benchmark/Network": (["platform", "benchmark", "tests/support/FirebirdServer", "tests/support/SlowLink"],
                          ["Core"]),
    "benchmark": (["platform", "host", "magazzino", "benchmark"], WIDGETS),
}

# Pattern in the code, the prefixes where it is allowed, what to say.
RESERVED = [
    (re.compile(r"#\s*include\s*<QSql"), ["platform/data", "platform/core", "benchmark/Bare"],
     "database headers belong to platform/data"),
    (re.compile(r"\bQMessageBox\b"), ["platform/ui/MessageBoxes.cpp"],
     "message boxes go through platform/core/Messages.h"),
    (re.compile(r"\bQFileDialog\b"), ["platform/ui/Dialogs.cpp"], "file dialogs go through platform/ui/Dialogs.h"),
    (re.compile(r"\bQ(Print|PageSetup)Dialog\b"), ["host/ui/Printing.cpp", "tests/report"],
     "printing asks in host/ui/Printing"),
    (re.compile(r"\bQ(InputDialog|ProgressDialog|ErrorMessage|ColorDialog|FontDialog)\b"), [],
     "dialogs are those of platform/ui"),
    # The log tells when something happened, whatever the program takes for now.
    (re.compile(r"\bQ(DateTime|Date|Time)::current|\bsystem_clock\b|\bclock_gettime\b|\bgettimeofday\b"),
     ["platform/core/Clock.cpp", "platform/core/Log.cpp", "benchmark/main.cpp"],
     "now and today come from platform/core/Clock.h"),
    # A dialog is run through its seam; the driver runs statements, and the program its main loop.
    (re.compile(r"(\.|->|\bQ(Core|Gui)?Application::)exec\("),
     ["platform/ui/Dialogs.cpp", "platform/ui/MessageBoxes.cpp", "platform/data", "host/start/Startup.cpp",
      "host/start/Keyring.cpp", "benchmark/Bare.cpp"],
     "dialogs run through platform/ui/Dialogs.h"),
    (re.compile(r"\bQEventLoop\b|\bprocessEvents\b"),
     ["tests/support/Controls", "benchmark/Program.cpp", "platform/ui/WaitWindow.cpp", "platform/ui/ProgressDialog.cpp",
      "host/start/Keyring.cpp"],
     "events are handled by the program's main loop, the window before it, between two steps of a long work, by the "
     "keyring and the tests' settle()"),
    # For a file or a database that another program holds just now, before the program's first window, and a link's
    # delay in threads.
    (re.compile(r"\b(QThread::)?[mu]?sleep(_for|_until)?\("), ["platform/core/Settings.cpp", "platform/data/DatabaseFile.cpp", "platform/ui/WaitWindow.cpp", "host/start/StartTurn.cpp", "tests/support/SlowLink.cpp"],
     "a program with windows does not sleep"),
    (re.compile(r"\bbeep\("), ["platform/ui/Bell.cpp"], "the bell rings through platform/ui/Bell.h"),
    (re.compile(r"\bnew Q(LineEdit|ComboBox|(Date|Time|DateTime)Edit)\("), [], "inputs are those of platform/ui"),
    (re.compile(r"\bnew Q(Double)?SpinBox\("), ["host/ui"], "inputs are those of platform/ui"),
]

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')
QT_FOLDER = re.compile(r"^Qt(Core|Gui|Widgets|Sql|PrintSupport|Network|DBus|Test)/")
COMMENT = re.compile(r"//.*")
FORMS = "magazzino/forms/"
TOPS = ("platform", "host", "magazzino", "tour", "tests", "benchmark")


def qt_modules():
    """Class header -> Qt module, from the installed headers (a header unknown here is not judged)."""
    roots = sorted(Path("/usr/include").glob("*/qt6")) + [Path("/usr/include/qt6")]
    modules = {}
    for root in roots:
        for module in ("Core", "Gui", "Widgets", "Sql", "PrintSupport", "Network", "DBus", "Test"):
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
    for top in TOPS:
        for file in sorted((root / top).rglob("*")):
            if file.suffix not in (".h", ".cpp") or file.name == "pch.h":
                continue
            path = file.relative_to(root).as_posix()
            for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
                found = INCLUDE.match(line)
                text = include_breach(path, *found.groups(), modules) if found else None
                code = COMMENT.sub("", line)
                for pattern, allowed, reason in RESERVED:
                    if pattern.search(code) and not any(path.startswith(prefix) for prefix in allowed):
                        text = text or reason
                if text:
                    yield f"{path}:{number}: {text}"


def main():
    root = Path(sys.argv[1] if len(sys.argv) > 1 else Path(__file__).resolve().parent.parent)
    found = [*breaches(root), *untranslated(root), *too_early(root)]
    print("\n".join(found), end="\n" if found else "")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
