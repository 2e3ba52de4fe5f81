"""Checks the finished library: check_image.py PROGRAM LIBRARY MOVED-LIBRARY IMPORTS

PROGRAM is what LIBRARY was written from; MOVED-LIBRARY is the same linked for another base."""

import sys
from pathlib import Path

from elf import ElfError, Program
from imports import TableError, read_table
from instructions import forbidden
from pe_reader import Image, ImageError
from write_image import EXPORTS

LARGEST = 96 * 1024
_PAGE = 0x1000


def _moved_words(image: Image, moved: Image) -> list[int]:
    """The places of the words that differ, outside the relocations themselves."""
    if len(image.loaded) != len(moved.loaded):
        raise ImageError("the image linked for another base has another size")
    end = image.directory(5)[0]
    return [place for place in range(_PAGE, end, 4) if image.word(place) != moved.word(place)]


def _unwinding(program: Program) -> list[str]:
    """Without its table's exact bounds the run time finds no handler, and every exception ends the program."""
    table = program.section(".ARM.exidx")
    if table is None:
        return ["there is no unwinding table"]
    bounds = program.address("__exidx_start"), program.address("__exidx_end")
    if bounds != (table.address, table.end):
        return [f"the unwinding table lies at {table.address:#x}, its bounds say {bounds[0]:#x} to {bounds[1]:#x}"]
    return []


def findings(program: Program, image: Image, moved: Image, known: dict[str, str], size: int) -> list[str]:
    """What is wrong, one line each."""
    result = forbidden(program) + _unwinding(program)
    if _moved_words(image, moved) != image.relocations():
        result.append("the words that another base changes are not those that the relocations name")
    if sorted(image.exports()) != sorted(EXPORTS):
        result.append(f"exports are {', '.join(image.exports())}")
    for library, name in image.imports():
        if known.get(name) != library:
            result.append(f"{library} is not known to have {name}")
    if size > LARGEST:
        result.append(f"{size} bytes, {size - LARGEST} more than allowed")
    return result


def main(arguments: list[str]) -> int:
    if len(arguments) != 4:
        print(__doc__, file=sys.stderr)
        return 2
    program, library, moved, table = (Path(argument) for argument in arguments)
    try:
        known = {entry.name: entry.library for entry in read_table(table) if not entry.late}
        wrong = findings(Program(program), Image(library), Image(moved), known, library.stat().st_size)
    except (OSError, ElfError, ImageError, TableError) as error:
        wrong = [str(error)]
    for line in wrong:
        print(f"check_image: {library.name}: {line}", file=sys.stderr)
    if not wrong:
        size = library.stat().st_size
        print(f"{library.name}: {size} bytes, {100 * size // LARGEST} % of what it may take")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
