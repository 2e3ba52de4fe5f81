"""Writes the thunks through which the library calls the device, as assembly: make_thunks.py TABLE OUTPUT"""

import sys
from pathlib import Path

from imports import Import, TableError, read_table

# Each thunk and each slot has a section of its own, so that the linker drops those that nobody calls. The section's name
# sorts a library's slots together, and the closing empty word behind them.
THUNK = """
    .section .text.ce_{name}, "ax", %progbits
    .globl ce_{name}
    .type ce_{name}, %function
ce_{name}:
    ldr ip, 1f
    ldr pc, [ip]
1:  .word {slot}
    .size ce_{name}, . - ce_{name}

    .section {section}, "aw", %progbits
    .globl {slot}
    .balign 4
{slot}:
    .word 0
"""

END_OF_LIBRARY = """
    .section .iat.{library}.~end, "awR", %progbits
    .balign 4
    .word 0
"""


def section(entry: Import) -> str:
    return f".late.{entry.name}" if entry.late else f".iat.{entry.library}.{entry.name}"


def thunks(table: list[Import]) -> str:
    text = ["    .syntax unified\n    .arm\n"]
    text += [THUNK.format(name=entry.name, slot=entry.slot, section=section(entry)) for entry in table]
    libraries = sorted({entry.library for entry in table if not entry.late})
    text += [END_OF_LIBRARY.format(library=library) for library in libraries]
    return "".join(text)


def main(arguments: list[str]) -> int:
    if len(arguments) != 2:
        print(__doc__, file=sys.stderr)
        return 2
    try:
        Path(arguments[1]).write_text(thunks(read_table(Path(arguments[0]))), encoding="utf-8")
    except (OSError, TableError) as error:
        print(f"make_thunks: {error}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
