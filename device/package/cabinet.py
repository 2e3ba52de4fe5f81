"""Writes a cabinet file whose contents are stored as they are, which every device's installer can read."""

import struct
from dataclasses import dataclass

_HEADER = struct.Struct("<4sIIIIIBBHHHHH")
_FOLDER = struct.Struct("<IHH")
_FILE = struct.Struct("<IIHHHH")
_BLOCK = struct.Struct("<IHH")

_LARGEST_BLOCK = 0x8000
_STORED = 0
_ARCHIVE = 0x20
# The oldest date there is, 1980-01-01: no file's own, so that the same contents give the same bytes.
_DATE, _TIME = 1 << 5 | 1, 0


@dataclass(frozen=True)
class CabinetFile:
    name: str
    data: bytes


def checksum(data: bytes, seed: int = 0) -> int:
    """The little-endian words taken together by exclusive or; up to three bytes left over count from the highest down."""
    whole = len(data) & ~3
    for (word,) in struct.iter_unpack("<I", data[:whole]):
        seed ^= word
    return seed ^ int.from_bytes(data[whole:], "big")


def _block(data: bytes) -> bytes:
    sizes = struct.pack("<HH", len(data), len(data))
    return _BLOCK.pack(checksum(sizes, checksum(data)), len(data), len(data)) + data


def write(files: list[CabinetFile]) -> bytes:
    """One folder with the files in their order."""
    contents = b"".join(file.data for file in files)
    blocks = [
        _block(contents[start : start + _LARGEST_BLOCK]) for start in range(0, len(contents), _LARGEST_BLOCK)
    ]
    entries, start = bytearray(), 0
    for file in files:
        entries += _FILE.pack(len(file.data), start, 0, _DATE, _TIME, _ARCHIVE)
        entries += file.name.encode("ascii") + b"\0"
        start += len(file.data)
    entries_at = _HEADER.size + _FOLDER.size
    blocks_at = entries_at + len(entries)
    size = blocks_at + sum(len(block) for block in blocks)
    header = _HEADER.pack(b"MSCF", 0, size, 0, entries_at, 0, 3, 1, 1, len(files), 0, 0, 0)
    return header + _FOLDER.pack(blocks_at, len(blocks), _STORED) + bytes(entries) + b"".join(blocks)
