#!/usr/bin/env python3
"""Checks the includes of a source tree against the table in its docs/architecture.md.

Each line of the table names a room, a folder or a single file, and the rooms that it
may use. "qt/*" stands for all rooms in qt/. The rules:

- A room uses only what its line names, and a line names only rooms further down.
- A private header is seen by its own library alone, and by a file whose own line names
  the header. A library is a folder that holds "inc", and what lies elsewhere in it is
  private.
- No two classes include each other, also not through others. A header and the source
  of the same name are one class, and a public header lies in the room of its source.

Usage: check_arrows.py [ROOT]
"""
import graphlib
import pathlib
import posixpath
import re
import sys

table = "docs/architecture.md"


def read_table(root):
    """The rooms in their order, each with the rooms that it may use, and what is wrong."""
    lines = (root / table).read_text(encoding="utf-8").partition("```arrows\n")[2]
    rows = [line.partition("#")[0].split() for line in lines.partition("```")[0].splitlines()]
    rows = [row for row in rows if row]
    names = [name for name, *_ in rows]
    rooms, errors = {}, [] if rows else [f"{table}: there is no table of arrows"]
    for number, (name, *uses) in enumerate(rows):
        below = names[number + 1:]
        if name in rooms or not (root / name).exists():
            errors.append(f"{table}: {name} is there twice, or is no folder or file")
        rooms[name] = set()
        for use in uses:
            found = {room for room in below
                     if room == use or use.endswith("/*") and room.startswith(use[:-1])}
            if (root / name).is_file() and (root / use).is_file() and use.endswith("_p.h"):
                found.add(use)
            rooms[name] |= found
            if not found:
                errors.append(f"{table}: {name} uses {use}, which is not a room below it")
    return rooms, errors


class Tree:
    def __init__(self, root, rooms):
        self.root, self.rooms = root, rooms
        folders = sorted({name.split("/")[0] for name in rooms})
        self.files = {path.relative_to(root).as_posix() for folder in folders
                      for path in (root / folder).rglob("*") if path.suffix in (".h", ".cpp")}
        self.divided = {folder.as_posix() for room in rooms if (root / room).is_dir()
                        for folder in pathlib.PurePath(room).parents}
        # Where includes are looked for.
        self.tops = sorted({match[1] for file in self.files
                            if (match := re.match(r"(.*?/(?:inc|src))/", file))})
        self.libraries = sorted({file.split("/inc/")[0] for file in self.files
                                 if "/inc/" in file}, key=len, reverse=True)
        self.sources = {(self.library_of(file), pathlib.PurePath(file).stem): file
                        for file in self.files if file.endswith(".cpp")}

    def library_of(self, file):
        return next((name for name in self.libraries if file.startswith(name + "/")), None)

    def class_of(self, file):
        """The path that a header and its source share."""
        path = pathlib.PurePath(file)
        stem = path.stem[:-2] if path.stem.endswith("_p") else path.stem
        source = file
        if "/inc/" in file:
            source = self.sources.get((self.library_of(file), stem), file)
        return pathlib.PurePath(source).with_name(stem).as_posix()

    def room_of(self, file):
        """The file's own line, or else the innermost folder with a line. Where folders in
        it have lines of their own, the others need some, too."""
        if file in self.rooms:
            return file
        path = pathlib.PurePath(self.class_of(file))
        folders = [folder.as_posix() for folder in path.parents]
        room = next((folder for folder in folders if folder in self.rooms), None)
        return None if room in self.divided and room != folders[0] else room

    def find(self, include, file, quoted):
        near = [file.rpartition("/")[0], self.room_of(file)] if quoted else []
        candidates = [posixpath.normpath(f"{folder}/{include}") for folder in near + self.tops]
        return next((path for path in candidates if path in self.files), None)

    def check(self):
        errors, uses = [], {}
        for file in sorted(self.files):
            if not self.room_of(file):
                errors.append(f"{file}: lies in no room of {table}")
                continue
            lines = (self.root / file).read_text(encoding="utf-8").splitlines()
            for number, line in enumerate(lines, 1):
                match = re.match(r'\s*#\s*include\s*([<"])([^>"]+)', line)
                if not match or match[2].endswith("_export.h"):
                    continue
                target = self.find(match[2], file, match[1] == '"')
                if not target and (match[1] == '"' or match[2].startswith("vrn/")):
                    errors.append(f"{file}:{number}: {match[2]} is not found")
                elif target and (error := self.error(file, target)):
                    errors.append(f"{file}:{number}: {error}")
                elif target:
                    uses.setdefault(self.class_of(file), set()).add(self.class_of(target))
        try:
            graphlib.TopologicalSorter(
                {name: used - {name} for name, used in uses.items()}).prepare()
        except graphlib.CycleError as cycle:
            errors.append("include each other: " + ", ".join(sorted(set(cycle.args[1]))))
        return errors

    def error(self, file, target):
        """What is wrong with the arrow from the one file to the other, if anything."""
        if target in self.rooms.get(file, ()):
            return None
        library = self.library_of(target)
        if library and "/inc/" not in target and self.library_of(file) != library:
            return f"{target} is private to {library}"
        user, used = self.room_of(file), self.room_of(target)
        if used != user and used not in self.rooms[user]:
            return f"{user} may not use {used} ({target})"
        return None


def main():
    root = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else ".")
    rooms, errors = read_table(root)
    errors = errors or Tree(root, rooms).check()
    for error in errors:
        print(error)
    return 1 if errors else 0


sys.exit(main())
