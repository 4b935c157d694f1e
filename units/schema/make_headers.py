#!/usr/bin/env python3
"""Makes the C++ headers of the unit library's types from their Bond schema.

    make_headers.py            writes inc/vrn/units/<name>.h for each <name>.bond
    make_headers.py --check    writes nothing; fails if a header is out of date

It reads the part of the Bond language that the schema uses: one namespace,
imports, enumerations whose constants have values, and structures of
enumerations, int32 and string, where a string may default to nothing. Comments
above a declaration become its documentation. A last namespace component such as
`v1` becomes an inline namespace.
"""

import argparse
import pathlib
import re
import sys

HERE = pathlib.Path(__file__).resolve().parent
HEADERS = HERE / "inc" / "vrn" / "units"


class SchemaError(Exception):
    pass


class Reader:
    """Hands out the lines of a schema, with the comments above each."""

    def __init__(self, path):
        self.path = path
        self.lines = path.read_text(encoding="utf-8").splitlines()
        self.number = 0

    def next(self):
        """The next line that declares something, and the comment lines above it.

        A blank line ends a comment; inside an enumeration it is reported as "".
        """
        comment = []
        while self.number < len(self.lines):
            line = self.lines[self.number].strip()
            self.number += 1
            if line.startswith("//"):
                comment.append(line[2:].strip())
            else:
                return line, comment
        return None, comment

    def fail(self, message):
        raise SchemaError(f"{self.path.name}:{self.number}: {message}")

    def open_brace(self):
        line, _ = self.next()
        if line != "{":
            self.fail("'{' expected")


def documentation(comment, indent=""):
    return [f"{indent}/// {line}".rstrip() for line in comment]


def read_enum(reader, name, comment):
    reader.open_brace()
    out = ["namespace _bond_enumerators {", f"namespace {name} {{", ""]
    out += documentation(comment)
    # Every 32-bit number is a value of the type: ids reach the library unchecked.
    out += [f"enum {name} : std::int32_t", "{"]
    while True:
        line, _ = reader.next()
        if line == "}":
            break
        if line == "":
            out.append("")
            continue
        constant = re.fullmatch(r"(\w+) = (-?\d+),\s*(?://\s*(.*))?", line or "")
        if not constant:
            reader.fail("'NAME = value,' expected")
        text = f"    {constant[1]} = {constant[2]},"
        out.append(text + (f" ///< {constant[3]}" if constant[3] else ""))
    out += ["};", "", f"}} // namespace {name}", "} // namespace _bond_enumerators", ""]
    out += ["using namespace _bond_enumerators;", ""]
    return out


def member(reader, kind, name, default):
    if kind == "int32":
        return f"std::int32_t {name} = {default};"
    if kind == "string" and default == "nothing":
        return f"::bond::maybe<std::string> {name};"
    if kind[0].isupper():
        return f"{kind}::{kind} {name} = {kind}::{default};"
    reader.fail(f"no C++ type for '{kind}' with the default '{default}'")


def read_struct(reader, name, comment):
    reader.open_brace()
    members = []
    out = documentation(comment) + [f"struct {name}", "{"]
    while True:
        line, field_comment = reader.next()
        if line == "}":
            break
        parts = re.fullmatch(r"\d+: (\w+) (\w+) = (\w+);", line or "")
        if not parts:
            reader.fail("'ordinal: type name = default;' expected")
        out += documentation(field_comment, "    ")
        out.append("    " + member(reader, parts[1], parts[2], parts[3]))
        members.append(parts[2])
    tied = ", ".join(f"each.{field}" for field in members)
    out += [
        "",
        f"    friend bool operator==(const {name}& left, const {name}& right)",
        "    {",
        f"        const auto members = [](const {name}& each) {{",
        f"            return std::tie({tied});",
        "        };",
        "        return members(left) == members(right);",
        "    }",
        f"    friend bool operator!=(const {name}& left, const {name}& right)",
        "    {",
        "        return !(left == right);",
        "    }",
        "};",
        "",
    ]
    return out


def make_header(path):
    reader = Reader(path)
    namespace, includes, body = [], [], []
    while True:
        line, comment = reader.next()
        if line is None:
            break
        if line == "":
            continue
        words = line.split()
        if words[0] == "import":
            includes.append(pathlib.Path(words[1].strip('"')).stem)
        elif words[0] == "namespace":
            namespace = words[1].split(".")
        elif words[0] == "enum":
            body += read_enum(reader, words[1], comment)
        elif words[0] == "struct":
            body += read_struct(reader, words[1], comment)
        else:
            reader.fail("'import', 'namespace', 'enum' or 'struct' expected")

    versioned = re.fullmatch(r"v\d+", namespace[-1]) is not None
    outer = "::".join(namespace[:-1] if versioned else namespace)
    text = "\n".join(body)
    out = [f"// Made from {path.name} by make_headers.py; changes belong there.", "#pragma once", ""]
    own = [f"#include <vrn/units/{name}.h>" for name in includes]
    if "::bond::" in text:
        own.insert(0, "#include <vrn/units/bond.h>")
    out += own + ([""] if own else [])
    out += ["#include <cstdint>"]
    if "std::string" in text:
        out.append("#include <string>")
    if "std::tie" in text:
        out.append("#include <tuple>")
    out += ["", f"namespace {outer} {{"]
    if versioned:
        out.append(f"inline namespace {namespace[-1]} {{")
    out += ["", text.rstrip(), ""]
    if versioned:
        out.append(f"}} // namespace {namespace[-1]}")
    out.append(f"}} // namespace {outer}")
    return "\n".join(out) + "\n"


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--check", action="store_true", help="fail if a header is out of date")
    arguments = parser.parse_args()
    outdated = []
    for schema in sorted(HERE.glob("*.bond")):
        header = HEADERS / (schema.stem + ".h")
        text = make_header(schema)
        if header.exists() and header.read_text(encoding="utf-8") == text:
            continue
        outdated.append(header.name)
        if not arguments.check:
            header.write_text(text, encoding="utf-8")
    if outdated:
        print("out of date:" if arguments.check else "written:", ", ".join(outdated))
    return 1 if outdated and arguments.check else 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except SchemaError as error:
        sys.exit(str(error))
