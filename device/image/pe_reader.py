"""Reads a finished image as a loader would, to check what the writer wrote."""

import struct
from pathlib import Path


class ImageError(Exception):
    """The file is no image that a loader would take."""


class Image:
    def __init__(self, path: Path):
        data = path.read_bytes()
        header = struct.unpack_from("<I", data, 0x3C)[0]
        if data[:2] != b"MZ" or data[header : header + 4] != b"PE\0\0":
            raise ImageError(f"{path}: no portable executable")
        (sections,) = struct.unpack_from("<H", data, header + 6)
        (optional_size,) = struct.unpack_from("<H", data, header + 20)
        self._optional = data[header + 24 : header + 24 + optional_size]
        self.base = struct.unpack_from("<I", self._optional, 28)[0]
        self.loaded = bytearray(struct.unpack_from("<I", self._optional, 56)[0])
        for index in range(sections):
            at = header + 24 + optional_size + 40 * index
            size, place, stored, offset = struct.unpack_from("<IIII", data, at + 8)
            self.loaded[place : place + min(size, stored)] = data[offset : offset + min(size, stored)]

    def directory(self, number: int) -> tuple[int, int]:
        """Place and size."""
        return struct.unpack_from("<II", self._optional, 96 + 8 * number)

    def word(self, place: int) -> int:
        return struct.unpack_from("<I", self.loaded, place)[0]

    def text(self, place: int) -> str:
        return self.loaded[place : self.loaded.index(0, place)].decode("ascii")

    def exports(self) -> dict[str, int]:
        """Places by name."""
        directory, size = self.directory(0)
        if size == 0:
            return {}
        count, functions, names, ordinals = struct.unpack_from("<IIII", self.loaded, directory + 24)
        return {
            self.text(self.word(names + 4 * index)): self.word(
                functions + 4 * struct.unpack_from("<H", self.loaded, ordinals + 2 * index)[0]
            )
            for index in range(count)
        }

    def imports(self) -> list[tuple[str, str]]:
        """Library and name, in the order of the slots."""
        result = []
        descriptor = self.directory(1)[0]
        while self.word(descriptor + 12):
            library, slot = self.text(self.word(descriptor + 12)), self.word(descriptor + 16)
            while self.word(slot):
                result.append((library, self.text(self.word(slot) + 2)))
                slot += 4
            descriptor += 20
        return result

    def relocations(self) -> list[int]:
        """The places of the words to relocate."""
        at, size = self.directory(5)
        end, places = at + size, []
        while at < end:
            page, length = struct.unpack_from("<II", self.loaded, at)
            for (entry,) in struct.iter_unpack("<H", self.loaded[at + 8 : at + length]):
                if entry >> 12 not in (0, 3):
                    raise ImageError(f"relocation of kind {entry >> 12} on page {page:#x}")
                if entry >> 12 == 3:
                    places.append(page + (entry & 0xFFF))
            at += length
        return places
