"""Finds instructions that the oldest processor lacks."""

import bisect
import struct
from collections.abc import Iterator

from elf import Program, Section

# Mask, value, and what the pattern is. Patterns with the condition "never" are other instructions of later processors.
_FORBIDDEN = [
    (0x0FFFFFF0, 0x012FFF10, "BX"),
    (0x0FFFFFF0, 0x012FFF30, "BLX"),
    (0x0E1000F0, 0x000000D0, "LDRD"),
    (0x0E1000F0, 0x000000F0, "STRD"),
    (0xFE000000, 0xFA000000, "BLX to an address"),
]


def _code_ranges(program: Program, section: Section) -> Iterator[tuple[int, int]]:
    """Where instructions stand; literals between them are data. The assembler marks both."""
    marks = sorted(
        (symbol.value, symbol.name[:2] == "$a")
        for symbol in program.symbols
        if symbol.name[:2] in ("$a", "$d") and symbol.name[2:3] in ("", ".") and symbol.section
    )
    marks = marks[bisect.bisect_left(marks, (section.address, False)) :]
    for index, (start, is_code) in enumerate(marks):
        if start >= section.end:
            return
        end = marks[index + 1][0] if index + 1 < len(marks) else section.end
        if is_code:
            yield start, min(end, section.end)


def forbidden(program: Program) -> list[str]:
    """One line for each instruction that StrongARM can't execute, or that needs a stack aligned to eight bytes."""
    section = program.section(".text")
    found = []
    for start, end in _code_ranges(program, section):
        for address in range(start, end - 3, 4):
            (word,) = struct.unpack_from("<I", section.data, address - section.address)
            if word >> 28 == 0xF and word & 0xFE000000 != 0xFA000000:
                continue
            found += [f"{name} at {address:#x}" for mask, value, name in _FORBIDDEN if word & mask == value]
    return found
