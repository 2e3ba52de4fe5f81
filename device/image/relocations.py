"""Which words of the image hold addresses of the image itself, and how the loader is told of them."""

import struct

from elf import ElfError, Program

# Relocation kinds of the ARM linker. Those relative to their own place stay right wherever the image lies, and the marks of
# branch instructions say nothing of the image's place.
R_ARM_ABS32 = 2
R_ARM_TARGET1 = 38
_ABSOLUTE = {R_ARM_ABS32, R_ARM_TARGET1}
_PLACE_INDEPENDENT = {
    0,  # NONE, which keeps a section alive
    1,  # PC24
    3,  # REL32
    28,  # CALL
    29,  # JUMP24
    40,  # V4BX
    42,  # PREL31
}

IMAGE_REL_BASED_HIGHLOW = 3
_PAGE = 0x1000


def absolute_words(program: Program, start: int, end: int) -> list[int]:
    """The addresses of the words to relocate, in ascending order. Each must point into [start, end]."""
    contents = [section for section in program.sections if section.loaded and section.data]
    words: set[int] = set()
    for relocation in program.relocations:
        if relocation.kind in _PLACE_INDEPENDENT:
            continue
        if relocation.kind not in _ABSOLUTE:
            raise ElfError(f"relocation of kind {relocation.kind} at {relocation.address:#x}")
        section = next((s for s in contents if s.address <= relocation.address <= s.end - 4), None)
        if section is None:
            raise ElfError(f"relocation at {relocation.address:#x} lies in no section")
        (target,) = struct.unpack_from("<I", section.data, relocation.address - section.address)
        if target == 0:
            continue  # a weak reference that nothing satisfied: null stays null
        if not start <= target <= end:
            raise ElfError(f"the word at {relocation.address:#x} points outside the image, to {target:#x}")
        words.add(relocation.address)
    return sorted(words)


def base_relocations(places: list[int]) -> bytes:
    """The blocks of the .reloc section for words at these places of the loaded image."""
    blocks = bytearray()
    for page in sorted({place & -_PAGE for place in places}):
        entries = [IMAGE_REL_BASED_HIGHLOW << 12 | place - page for place in places if place & -_PAGE == page]
        if len(entries) % 2:
            entries.append(0)  # blocks end on four bytes
        blocks += struct.pack("<II", page, 8 + 2 * len(entries))
        blocks += struct.pack(f"<{len(entries)}H", *entries)
    return bytes(blocks)
