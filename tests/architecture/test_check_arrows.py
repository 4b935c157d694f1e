#!/usr/bin/env python3
"""Plants includes in small trees and looks at what check_arrows.py says of them."""
import pathlib
import subprocess
import sys
import tempfile
import unittest

script = pathlib.Path(__file__).with_name("check_arrows.py")

table = """
app/probe.cpp       app lib/inc lib/src/high/helper_p.h
app                 lib/*
lib/inc/lib/all.h   lib/src/*
lib/beside          lib/src/high lib/inc
lib/view            lib/inc
lib/src             lib/src/*
lib/src/high        lib/src/low lib/inc
lib/src/low         lib/inc     # Not the other way round.
lib/inc
"""

# Each file with what it includes.
tree = {
    "app/main.cpp": ["<lib/high.h>", '"main_window.h"', "<vector>", "<lib/lib_export.h>"],
    "app/main_window.h": ["<lib/types.h>"],
    "app/probe.cpp": ['"main_window.h"', "<lib/types.h>", '"high/helper_p.h"'],
    "lib/beside/beside.cpp": ["<lib/beside.h>", '"beside_p.h"', '"high/helper_p.h"'],
    "lib/beside/beside_p.h": ["<lib/high.h>"],
    "lib/inc/lib/all.h": ["<lib/high.h>"],
    "lib/inc/lib/beside.h": ["<lib/types.h>"],
    "lib/inc/lib/high.h": ["<lib/types.h>"],
    "lib/inc/lib/types.h": [],
    "lib/inc/lib/view.h": ["<lib/types.h>"],
    "lib/src/high/high.cpp": ["<lib/high.h>", '"low/low_p.h"', '"high/helper_p.h"'],
    "lib/src/high/helper_p.h": [],
    "lib/src/low/low.cpp": ['"low/low_p.h"'],
    "lib/src/low/low_p.h": ["<lib/types.h>"],
    "lib/view/view.cpp": ["<lib/view.h>"],
    "lib/src/start.cpp": ['"high/helper_p.h"'],
}

includes = {
    "the tree as it stands": ({}, ""),
    "a private header of a room above": (
        {"lib/src/low/low.cpp": ['"high/helper_p.h"']},
        "lib/src/low/low.cpp:1: lib/src/low may not use lib/src/high (lib/src/high/helper_p.h)"),
    "a public header whose source is in a room above": (
        {"lib/src/low/low.cpp": ["<string>", "<lib/high.h>"]},
        "lib/src/low/low.cpp:2: lib/src/low may not use lib/src/high (lib/inc/lib/high.h)"),
    "a public header whose source is not in src": (
        {"lib/src/low/low.cpp": ["<lib/view.h>"]},
        "lib/src/low/low.cpp:1: lib/src/low may not use lib/view (lib/inc/lib/view.h)"),
    "from a public header to a room that its source may not use": (
        {"lib/inc/lib/low.h": ["<lib/high.h>"]},
        "lib/inc/lib/low.h:1: lib/src/low may not use lib/src/high (lib/inc/lib/high.h)"),
    "a header of all headers, from below": (
        {"lib/src/high/high.cpp": ["<lib/all.h>"]},
        "lib/src/high/high.cpp:1: lib/src/high may not use lib/inc/lib/all.h (lib/inc/lib/all.h)"),
    "a private header, from a program": (
        {"app/main.cpp": ['"../lib/src/high/helper_p.h"']},
        "app/main.cpp:1: lib/src/high/helper_p.h is private to lib"),
    "a private header, from a program that is built with the folder": (
        {"app/main.cpp": ['"high/helper_p.h"']},
        "app/main.cpp:1: lib/src/high/helper_p.h is private to lib"),
    "a private header, from a file whose line names another": (
        {"app/probe.cpp": ['"low/low_p.h"']},
        "app/probe.cpp:1: lib/src/low/low_p.h is private to lib"),
    "a public header whose source is in a room beside src": (
        {"lib/src/low/low.cpp": ["<lib/beside.h>"]},
        "lib/src/low/low.cpp:1: lib/src/low may not use lib/beside (lib/inc/lib/beside.h)"),
    "a private header of a room beside src, from a program": (
        {"app/main.cpp": ['"../lib/beside/beside_p.h"']},
        "app/main.cpp:1: lib/beside/beside_p.h is private to lib"),
    "the class that a helper is made for": (
        {"lib/src/high/helper_p.h": ["<lib/high.h>"]},
        "include each other: lib/src/high/helper, lib/src/high/high"),
    "the class that a helper is made for, from the helper's source": (
        {"lib/src/high/helper.cpp": ['"high/helper_p.h"', "<lib/high.h>"]},
        "include each other: lib/src/high/helper, lib/src/high/high"),
    "a header that is not there": (
        {"lib/src/low/low.cpp": ['"low/lost_p.h"']},
        "lib/src/low/low.cpp:1: low/lost_p.h is not found"),
    "anything, in a new folder beside others that have lines": (
        {"lib/src/new/new.cpp": []},
        "lib/src/new/new.cpp: lies in no room of docs/architecture.md"),
    "anything, in a new folder in a room that is not divided": (
        {"lib/src/low/new/new.cpp": ["<lib/high.h>"]},
        "lib/src/low/new/new.cpp:1: lib/src/low may not use lib/src/high (lib/inc/lib/high.h)"),
}

tables = {
    "an arrow that points up": (
        table.replace("# Not the", "lib/src/high # Not the"),
        "docs/architecture.md: lib/src/low uses lib/src/high, which is not a room below it"),
    "a private header that a folder names": (
        table.replace("app                 lib/*", "app   lib/* lib/src/high/helper_p.h"),
        "docs/architecture.md: app uses lib/src/high/helper_p.h, which is not a room below it"),
    "a room that is not there": (
        table + "lib/src/lost",
        "docs/architecture.md: lib/src/lost is there twice, or is no folder or file"),
    "a room with two lines": (
        table + "lib/inc",
        "docs/architecture.md: lib/inc is there twice, or is no folder or file"),
    "no table": ("", "docs/architecture.md: there is no table of arrows"),
}


class CheckArrows(unittest.TestCase):
    def check(self, files, rules):
        """What the script prints, with its result held against it."""
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            documents = {"docs/architecture.md": f"# Picture\n\n```arrows{rules}\n```\n"}
            documents.update((name, "".join(f"#include {include}\n" for include in included))
                             for name, included in files.items())
            for name, text in documents.items():
                (root / name).parent.mkdir(parents=True, exist_ok=True)
                (root / name).write_text(text, encoding="utf-8")
            run = subprocess.run([sys.executable, script, folder], capture_output=True, text=True)
        self.assertEqual(run.stderr, "")
        self.assertEqual(run.returncode, 1 if run.stdout else 0)
        return run.stdout.strip()

    def test_includes(self):
        for row, (planted, expected) in includes.items():
            with self.subTest(row):
                self.assertEqual(self.check({**tree, **planted}, table), expected)

    def test_tables(self):
        for row, (rules, expected) in tables.items():
            with self.subTest(row):
                self.assertEqual(self.check(tree, rules), expected)


unittest.main()
