"""The import and export directories of the image."""

import struct
from dataclasses import dataclass

_DESCRIPTOR_SIZE = 20
_EXPORT_SIZE = 40


@dataclass(frozen=True)
class LibraryImports:
    library: str
    names: list[str]  # in the order of their slots
    slots: int  # the place of the first slot; the others follow, then an empty one


def _name_entry(name: str) -> bytes:
    """A hint of zero and the name; entries begin at even places."""
    entry = b"\0\0" + name.encode("ascii") + b"\0"
    return entry + b"\0" * (len(entry) % 2)


def import_directory(place: int, libraries: list[LibraryImports]) -> tuple[bytes, dict[int, int]]:
    """The directory for this place of the loaded image, and for each slot's place the word that it holds in the file."""
    lookups_at = place + _DESCRIPTOR_SIZE * (len(libraries) + 1)
    texts_at = lookups_at + sum(4 * (len(library.names) + 1) for library in libraries)
    descriptors, lookups, texts = bytearray(), bytearray(), bytearray()
    slots: dict[int, int] = {}
    for library in libraries:
        lookup = lookups_at + len(lookups)
        for index, name in enumerate(library.names):
            word = texts_at + len(texts)
            slots[library.slots + 4 * index] = word
            lookups += struct.pack("<I", word)
            texts += _name_entry(name)
        lookups += struct.pack("<I", 0)
        descriptors += struct.pack("<IIIII", lookup, 0, 0, texts_at + len(texts), library.slots)
        name_text = library.library.encode("ascii") + b"\0"
        texts += name_text + b"\0" * (len(name_text) % 2)
    descriptors += bytes(_DESCRIPTOR_SIZE)
    return bytes(descriptors + lookups + texts), slots


def export_directory(place: int, module: str, exports: dict[str, int]) -> bytes:
    """The directory for this place; the exports are places by name, with ordinals from 1 in the order of the names."""
    names = sorted(exports)
    functions_at = place + _EXPORT_SIZE
    names_at = functions_at + 4 * len(names)
    ordinals_at = names_at + 4 * len(names)
    texts_at = ordinals_at + 2 * len(names)
    texts = bytearray(module.encode("ascii") + b"\0")
    name_places = []
    for name in names:
        name_places.append(texts_at + len(texts))
        texts += name.encode("ascii") + b"\0"
    header = struct.pack(
        "<IIHHIIIIIII", 0, 0, 0, 0, texts_at, 1, len(names), len(names), functions_at, names_at, ordinals_at
    )
    functions = struct.pack(f"<{len(names)}I", *(exports[name] for name in names))
    return header + functions + struct.pack(f"<{len(names)}I", *name_places) + struct.pack(
        f"<{len(names)}H", *range(len(names))
    ) + bytes(texts)  # fmt: skip
