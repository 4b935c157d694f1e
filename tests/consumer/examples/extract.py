#!/usr/bin/env python3
"""Makes sources of the examples in public headers and documents.

    extract.py OUT_DIR

An example is a block of lines in a /// comment that are indented by four blanks more
than its text, or what stands in a fence of cpp or cmake in README.md and docs/*.md.

One without main() becomes the body of a function of Form, see form.h; all of these
go into OUT_DIR/fragments.cpp. One with main() is a program by itself. The CMake
example after it in its document is the CMakeLists.txt that builds it, in a folder
OUT_DIR/programs/<document>_<line>.
"""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[3]


class Example:
    def __init__(self, path, line, language, lines):
        self.path = path.relative_to(ROOT)
        self.line = line
        self.language = language
        self.text = "".join(line + "\n" for line in lines)

    def place(self):
        return f"{self.path}:{self.line}"

    def is_program(self):
        return self.language == "cpp" and re.search(r"\bint main\(", self.text)


def in_header(path):
    """What is indented within /// comments; blank lines between belong to it."""
    block = []
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines() + [""], 1):
        comment = re.match(r"\s*///(.*)", line)
        text = comment.group(1) if comment else None
        if text and text.startswith(" " * 5):
            block.append((number, text[5:]))
        elif block and text is not None and not text.strip():
            block.append((number, ""))
        elif block:
            while not block[-1][1]:
                block.pop()
            yield Example(path, block[0][0], "cpp", [text for _, text in block])
            block = []


def in_document(path):
    fence = None
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        if fence is None and line.startswith("```"):
            fence, first, lines = line[3:], number + 1, []
        elif line == "```":
            if fence in ("cpp", "cmake"):
                yield Example(path, first, fence, lines)
            fence = None
        elif fence is not None:
            lines.append(line)


def all_examples():
    for folder in sorted([*ROOT.glob("*/inc"), *ROOT.glob("*/*/inc")]):
        for header in sorted(folder.rglob("*.h")):
            yield from in_header(header)
    for document in [ROOT / "README.md", *sorted((ROOT / "docs").glob("*.md"))]:
        yield from in_document(document)


def fragments_source(fragments):
    """One function for each, under the place from which it comes. What an example
    includes is included ahead of all."""
    includes = set()
    functions = []
    for number, fragment in enumerate(fragments, 1):
        includes.update(re.findall(r"^#include .*\n", fragment.text, re.M))
        body = re.sub(r"^#include .*$", "", fragment.text, flags=re.M)
        functions.append(
            f'\nstruct Example{number} final : Form\n{{\n    void run() override\n    {{\n'
            f'#line {fragment.line} "{fragment.path}"\n{body}    }}\n}};\n'
            f'static const ExampleEntry<Example{number}> entry{number}("{fragment.place()}");\n')
    return '#include "form.h"\n' + "".join(sorted(includes)) + "".join(functions)


def write(path, text):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(text, encoding="utf-8")


def main():
    out = pathlib.Path(sys.argv[1])
    fragments = []
    program = None
    for example in all_examples():
        if example.is_program():
            program = example
        elif example.language == "cpp":
            fragments.append(example)
        elif program is None or program.path != example.path:
            sys.exit(f"{example.place()}: no program before this CMake example")
        else:
            folder = out / "programs" / f"{example.path.stem}_{example.line}"
            write(folder / "main.cpp", program.text)
            write(folder / "CMakeLists.txt", example.text)
    write(out / "fragments.cpp", fragments_source(fragments))


main()
